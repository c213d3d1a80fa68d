#include "base/variant.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "base/runtime_error.h"

namespace tornby {
namespace {

constexpr std::size_t longest_number = 400;  // no accepted number needs more characters

std::string narrow_trimmed(StringView text) {
  constexpr StringView blanks = u" \t\r\n";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == StringView::npos) throw RuntimeError(StandardError::type_mismatch);
  text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
  if (text.size() > longest_number) throw RuntimeError(StandardError::type_mismatch);
  std::string narrow;
  for (const char16_t unit : text) {
    if (unit >= 0x80) throw RuntimeError(StandardError::type_mismatch);
    narrow += static_cast<char>(unit);
  }
  return narrow;
}

/// Hexadecimal and octal text names the 32 bits themselves, so &HFFFFFFFF is -1.
std::int32_t parse_radix(const char* first, const char* last, int radix) {
  std::uint32_t bits = 0;
  const auto [end, error] = std::from_chars(first, last, bits, radix);
  if (error == std::errc::result_out_of_range) throw RuntimeError(StandardError::overflow);
  if (error != std::errc() || end != last) throw RuntimeError(StandardError::type_mismatch);
  return static_cast<std::int32_t>(bits);
}

std::int32_t parse_int32(StringView text) {
  const std::string number = narrow_trimmed(text);
  const char* first = number.data();
  const char* last = first + number.size();
  if (number.size() > 2 && number[0] == '&') {
    if (number[1] == 'H' || number[1] == 'h') return parse_radix(first + 2, last, 16);
    if (number[1] == 'O' || number[1] == 'o') return parse_radix(first + 2, last, 8);
  }
  if (*first == '+' && number.size() > 1 && number[1] != '-') ++first;
  double value = 0;
  const auto [end, error] = std::from_chars(first, last, value);
  if (error == std::errc::result_out_of_range) throw RuntimeError(StandardError::overflow);
  if (error != std::errc() || end != last || !std::isfinite(value)) throw RuntimeError(StandardError::type_mismatch);
  value = std::nearbyint(value);  // halves to even in the default rounding mode
  if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
    throw RuntimeError(StandardError::overflow);
  return static_cast<std::int32_t>(value);
}

}  // namespace

std::int32_t to_int32(const Variant& value) {
  if (const auto* small = std::get_if<std::int16_t>(&value)) return *small;
  if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
  if (const auto* text = std::get_if<String>(&value)) return parse_int32(*text);
  return 0;
}

}  // namespace tornby
