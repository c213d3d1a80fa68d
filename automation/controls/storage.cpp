#include "automation/controls/storage.h"

#include <bit>
#include <cstring>
#include <type_traits>

#include "automation/com/convert.h"
#include "automation/com/error_edge.h"
#include "automation/controls/ole_values.h"
#include "base/runtime_error.h"

namespace tornby::automation {
namespace {

constexpr std::uint32_t magic = 0x4E524F54;  // "TORN"
constexpr std::uint32_t format = 1;
constexpr std::uint32_t longest_text = 1 << 24;  // more is a damaged stream, not a caption
constexpr std::uint32_t most_properties = 1000;  // likewise

static_assert(std::endian::native == std::endian::little);

class Writer {
 public:
  explicit Writer(IStream* stream) : stream_(stream) {}

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
    const auto object = unwrap_picture(picture);
    put(static_cast<bool>(object));
    if (!object) return;
    ComPtr<IPersistStream> persist;
    check(object->QueryInterface(IID_IPersistStream, persist.out_void()));
    check(persist->Save(stream_, TRUE));
  }

 private:
  void put_bytes(const void* bytes, std::size_t size) {
    ULONG written = 0;
    check(stream_->Write(bytes, static_cast<ULONG>(size), &written));
    if (written != size) throw RuntimeError(StandardError::disk_full);
  }

  IStream* stream_;
};

class Reader {
 public:
  explicit Reader(IStream* stream) : stream_(stream) {}

  template <class Number>
  Number number() {
    Number value{};
    get_bytes(&value, sizeof value);
    return value;
  }
  bool boolean() { return number<std::uint8_t>() != 0; }
  String text() {
    const auto size = number<std::uint32_t>();
    if (size > longest_text) throw RuntimeError(StandardError::type_mismatch);
    String value(size, u'\0');
    get_bytes(value.data(), value.size() * sizeof(char16_t));
    return value;
  }
  Font font() {
    Font value;
    value.name = text();
    value.size = number<double>();
    value.weight = number<std::int16_t>();
    value.charset = number<std::int16_t>();
    value.italic = boolean();
    value.underline = boolean();
    value.strikeout = boolean();
    return value;
  }
  PicturePointer picture() {
    if (!boolean()) return nullptr;
    ComPtr<IPersistStream> persist;  // an empty picture, by no description at all
    check(::OleCreatePictureIndirect(nullptr, IID_IPersistStream, TRUE, persist.out_void()));
    check(persist->Load(stream_));
    return wrap_picture(persist.get());
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
        return picture();
    }
    throw RuntimeError(StandardError::type_mismatch);
  }

 private:
  void get_bytes(void* bytes, std::size_t size) {
    ULONG got = 0;
    check(stream_->Read(bytes, static_cast<ULONG>(size), &got));
    if (got != size) throw RuntimeError(StandardError::device_io_error);
  }

  IStream* stream_;
};

}  // namespace

std::optional<PropertyValue> ContainerBag::find(StringView name, PropertyKind kind) const {
  const String terminated(name);
  OwnedVariant value;
  value->vt = variant_type(kind);  // a container may convert to the type that it finds here
  value->byref = nullptr;
  if (FAILED(bag_->Read(reinterpret_cast<const wchar_t*>(terminated.c_str()), value.get(), log_))) return {};
  return to_property_value(*value);
}

void ContainerBag::store(StringView name, const PropertyValue& value) {
  if (value == PropertyValue(PicturePointer())) return;  // many bags cannot hold Nothing
  const String terminated(name);
  OwnedVariant stored(to_variant(value));
  check(bag_->Write(reinterpret_cast<const wchar_t*>(terminated.c_str()), stored.get()));
}

void StreamBag::save(IStream* stream) const {
  Writer writer(stream);
  writer.put(magic);
  writer.put(format);
  writer.put(static_cast<std::uint32_t>(properties_.size()));
  for (const auto& [name, value] : properties_) {
    writer.put(name);
    writer.put(static_cast<std::uint8_t>(kind_of(value)));
    std::visit([&writer](const auto& held) { writer.put(held); }, value);
  }
}

StreamBag StreamBag::load(IStream* stream) {
  Reader reader(stream);
  if (reader.number<std::uint32_t>() != magic || reader.number<std::uint32_t>() != format)
    throw RuntimeError(StandardError::type_mismatch);
  const auto count = reader.number<std::uint32_t>();
  if (count > most_properties) throw RuntimeError(StandardError::type_mismatch);
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

}  // namespace tornby::automation
