#include "controls/stream_bag.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <type_traits>

#include "base/runtime_error.h"

namespace tornby {
namespace {

constexpr std::uint32_t magic = 0x4E524F54;  // "TORN"
constexpr std::uint32_t format = 1;
constexpr std::uint32_t most_properties = 1000;   // more is a damaged stream
constexpr double largest_font = 922337203685477;  // points, the most that a font object can say

static_assert(std::endian::native == std::endian::little);

[[noreturn]] void refuse() {
  throw RuntimeError(StandardError::type_mismatch);
}

class Writer {
 public:
  explicit Writer(SettingsTarget& target) : target_(target) {}

  template <class Number>
  requires std::is_arithmetic_v<Number>
  void put(Number number) { put_bytes(&number, sizeof number); }
  void put(StringView text) {
    put(static_cast<std::uint32_t>(text.size()));
    put_bytes(text.data(), text.size() * sizeof(char16_t));
  }
  void put(const String& text) { put(StringView(text)); }
  void put(const Font& font) {
    put(font.name);
    put(font.size);
    put(font.weight);
    put(font.charset);
    put(font.italic);
    put(font.underline);
    put(font.strikeout);
  }
  void put(const PicturePointer& picture) {
    const bool kept = target_.is_kept(picture);
    put(kept);
    if (kept) target_.write(picture);
  }

 private:
  void put_bytes(const void* bytes, std::size_t size) {
    target_.write(ByteView(static_cast<const std::uint8_t*>(bytes), size));
  }

  SettingsTarget& target_;
};

class Reader {
 public:
  explicit Reader(SettingsSource& source) : source_(source) {}

  template <class Number>
  Number number() {
    Number value{};
    get_bytes(&value, sizeof value);
    return value;
  }
  bool boolean() { return number<std::uint8_t>() != 0; }
  /// Takes no more memory than the stream has text, whatever size it claims.
  String text() {
    constexpr std::size_t piece = 4096;
    const auto size = number<std::uint32_t>();
    String value;
    while (value.size() < size) {
      const std::size_t there = value.size();
      value.resize(std::min<std::size_t>(size, there + piece));
      get_bytes(value.data() + there, (value.size() - there) * sizeof(char16_t));
    }
    return value;
  }
  Font font() {
    Font value;
    value.name = text();
    value.size = number<double>();
    if (!(std::abs(value.size) <= largest_font)) refuse();  // nor is it a number at all
    value.weight = number<std::int16_t>();
    value.charset = number<std::int16_t>();
    value.italic = boolean();
    value.underline = boolean();
    value.strikeout = boolean();
    return value;
  }
  PropertyValue value(std::uint8_t kind) {
    switch (static_cast<PropertyKind>(kind)) {
      case PropertyKind::boolean:
        return boolean();
      case PropertyKind::int16:
        return number<std::int16_t>();
      case PropertyKind::int32:
        return number<std::int32_t>();
      case PropertyKind::color:
        return number<Color>();
      case PropertyKind::text:
        return text();
      case PropertyKind::font:
        return font();
      case PropertyKind::picture:
        return boolean() ? source_.picture() : nullptr;
    }
    refuse();
  }

 private:
  void get_bytes(void* bytes, std::size_t size) { source_.read({static_cast<std::uint8_t*>(bytes), size}); }

  SettingsSource& source_;
};

}  // namespace

void StreamBag::save(SettingsTarget& target) const {
  Writer writer(target);
  writer.put(magic);
  writer.put(format);
  writer.put(static_cast<std::uint32_t>(properties_.size()));
  for (const auto& [name, value] : properties_) {
    writer.put(name);
    writer.put(static_cast<std::uint8_t>(kind_of(value)));
    std::visit([&writer](const auto& held) { writer.put(held); }, value);
  }
}

StreamBag StreamBag::load(SettingsSource& source) {
  Reader reader(source);
  if (reader.number<std::uint32_t>() != magic || reader.number<std::uint32_t>() != format) refuse();
  const auto count = reader.number<std::uint32_t>();
  if (count > most_properties) refuse();
  StreamBag bag;
  for (std::uint32_t i = 0; i < count; ++i) {
    String name = reader.text();
    const auto kind = reader.number<std::uint8_t>();
    bag.properties_.emplace_back(std::move(name), reader.value(kind));
  }
  return bag;
}

std::optional<PropertyValue> StreamBag::find(StringView name, PropertyKind) const {
  for (const auto& [stored, value] : properties_)
    if (stored == name) return value;
  return {};
}

void StreamBag::store(StringView name, const PropertyValue& value) {
  properties_.emplace_back(name, value);
}

}  // namespace tornby
