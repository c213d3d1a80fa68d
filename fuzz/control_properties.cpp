// Any stored properties, read by each of the controls: read, or refused with a stated error, and what was read is
// stored and read again as it is.
#include "controls/kelBrowseButton.h"
#include "controls/kelHyperLabel.h"
#include "controls/kelLabel.h"
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
void check(const AnyBag& bag) {
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
  for (const auto& [name, value] : again.values) REQUIRE(equal_values(stored.values.at(name), value));
}

}  // namespace

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
  check<kelLabel>(bag);
  check<kelHyperLabel>(bag);
  check<kelBrowseButton>(bag);
}

}  // namespace tornby::fuzz
