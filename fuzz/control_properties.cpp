// Any stored properties, in a bag or as a stream, read by each of the controls: read, or refused with a stated error,
// and what was read is stored and read again as it is.
#include "controls/kelBrowseButton.h"
#include "controls/kelHyperLabel.h"
#include "controls/kelLabel.h"
#include "controls/stream_bag.h"
#include "fuzz/target.h"
#include "tests/controls/recording_host.h"

namespace tornby::fuzz {
namespace {

PropertyValue any_value(Input& input) {
  switch (input.below(7)) {
    case 0:
      return input.one_in(2);
    case 1:
      return static_cast<std::int16_t>(input.word());
    case 2:
      return static_cast<std::int32_t>(input.word());
    case 3:
      return Color{input.word()};
    case 4:
      return input.text(input.below(20));
    case 5:
      return Font{.name = input.text(input.below(5)), .size = input.below(200) / 4.0};
    default:
      return PicturePointer();
  }
}

/// A bag that converts what it holds to what is asked for, as those of real hosts do.
class AnyBag final : public PropertyBag {
 public:
  std::map<String, PropertyValue> values;

 private:
  std::optional<PropertyValue> find(StringView name, PropertyKind kind) const override {
    const auto found = values.find(String(name));
    return found == values.end() ? std::nullopt : std::optional(to_kind(found->second, kind));
  }
  void store(StringView name, const PropertyValue& value) override { values[String(name)] = value; }
};

template <class T>
void check(const PropertyBag& bag) {
  testing::RecordingHost host, other_host;
  T control(host), other(other_host);
  const std::int32_t error = raised([&] {
    control.ReadProperties(bag);
    control.resize();
  });
  REQUIRE(error == 0 || error == 6 || error == 13);
  if (error != 0) return;
  AnyBag stored, again;
  control.WriteProperties(stored);
  other.ReadProperties(stored);
  other.WriteProperties(again);
  for (const auto& [name, value] : again.values) {
    const auto before = stored.values.find(name);
    if (before != stored.values.end())
      REQUIRE(equal_values(before->second, value));
    else  // the one value that is left out and does not read back
      REQUIRE(name == u"LinkColor" && equal_values(value, Color{0xD54600}));
  }
}

void check_controls(const PropertyBag& bag) {
  check<kelLabel>(bag);
  check<kelHyperLabel>(bag);
  check<kelBrowseButton>(bag);
}

struct KeptPicture final : Picture {
  explicit KeptPicture(std::uint8_t length) : side(length) {}
  std::int32_t width() const override { return 100 * side; }
  std::int32_t height() const override { return 100 * side; }
  const std::uint8_t side;
};

/// A stream in which a picture is a byte.
class Source final : public SettingsSource {
 public:
  explicit Source(Input& input) : input_(input) {}

  void read(std::span<std::uint8_t> bytes) override {
    const ByteView taken = input_.take(bytes.size());
    if (taken.size() != bytes.size()) throw RuntimeError(StandardError::device_io_error);
    std::copy(taken.begin(), taken.end(), bytes.begin());
  }
  PicturePointer picture() override { return std::make_shared<KeptPicture>(input_.byte()); }

 private:
  Input& input_;
};

class Target final : public SettingsTarget {
 public:
  Bytes bytes;

 private:
  void write(ByteView more) override { bytes.insert(bytes.end(), more.begin(), more.end()); }
  bool is_kept(const PicturePointer& picture) const override { return picture != nullptr; }
  void write(const PicturePointer& picture) override {
    bytes.push_back(dynamic_cast<const KeptPicture&>(*picture).side);
  }
};

Bytes saved(const StreamBag& bag) {
  Target target;
  bag.save(target);
  return target.bytes;
}

}  // namespace

void control_streams(Input input) {
  StreamBag bag;
  Source source(input);
  const std::int32_t error = raised([&] { bag = StreamBag::load(source); });
  REQUIRE(error == 0 || error == 13 || error == 57);
  if (error != 0) return;
  const Bytes stored = saved(bag);
  Input again(stored);
  Source stored_source(again);
  REQUIRE(saved(StreamBag::load(stored_source)) == stored && again.empty());
  check_controls(bag);
}

void control_properties(Input input) {
  static constexpr StringView names[] = {u"Caption",
                                         u"BackColor",
                                         u"ForeColor",
                                         u"Font",
                                         u"Enabled",
                                         u"Alignment",
                                         u"AutoSize",
                                         u"VerticalAlignment",
                                         u"WordWrap",
                                         u"UseBorderLines",
                                         u"LinkColor",
                                         u"Picture",
                                         u"UseDynamicHeight",
                                         u"ClickColor",
                                         u"HoverColor",
                                         u"Text",
                                         u"Locked",
                                         u"MaxLength",
                                         u"Style",
                                         u"BorderApperance",
                                         u"ReadOnly",
                                         u"DisplayRubberBand",
                                         u"OverrideAutoAlign"};
  AnyBag bag;
  while (!input.empty()) {
    const StringView name = names[input.below(std::size(names))];
    bag.values[String(name)] = any_value(input);
  }
  check_controls(bag);
}

}  // namespace tornby::fuzz
