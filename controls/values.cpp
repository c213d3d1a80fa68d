#include "controls/values.h"

#include <optional>
#include <string>

#include "base/runtime_error.h"
#include "base/variant.h"

namespace tornby {
namespace {

/// The number behind a truth value, a number or a colour. Colours keep their 32 bits, as a signed number.
std::optional<std::int32_t> number_in(const PropertyValue& value) {
  switch (kind_of(value)) {
    case PropertyKind::boolean:
      return std::get<bool>(value) ? -1 : 0;
    case PropertyKind::int16:
      return std::get<std::int16_t>(value);
    case PropertyKind::int32:
      return std::get<std::int32_t>(value);
    case PropertyKind::color:
      return static_cast<std::int32_t>(std::get<Color>(value));
    default:
      return std::nullopt;
  }
}

}  // namespace

PropertyValue to_kind(const PropertyValue& value, PropertyKind kind) {
  if (kind_of(value) == kind) return value;
  std::optional<std::int32_t> number = number_in(value);
  if (!number && kind_of(value) == PropertyKind::text) {
    const String& text = std::get<String>(value);
    if (kind == PropertyKind::boolean && (text == u"True" || text == u"False")) return text == u"True";
    number = to_int32(text);
  }
  if (!number) throw RuntimeError(StandardError::type_mismatch);
  switch (kind) {
    case PropertyKind::boolean:
      return *number != 0;
    case PropertyKind::int16:
      if (*number < INT16_MIN || *number > INT16_MAX) throw RuntimeError(StandardError::overflow);
      return static_cast<std::int16_t>(*number);
    case PropertyKind::int32:
      return *number;
    case PropertyKind::color:
      return static_cast<Color>(*number);
    case PropertyKind::text:
      return widen(std::to_string(*number));
    default:
      throw RuntimeError(StandardError::type_mismatch);
  }
}

bool equal_values(const PropertyValue& left, const PropertyValue& right) {
  const std::optional<std::int32_t> left_number = number_in(left);
  if (left_number) return left_number == number_in(right);
  return left == right;
}

}  // namespace tornby
