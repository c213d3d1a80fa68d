// A value that may be absent.
#pragma once

#include <cstdint>
#include <variant>

#include <tornby/base/text.h>

namespace tornby {

/// Empty, a 16-bit integer, a 32-bit integer or text. Which of them a member returns is part of its contract:
/// a script sees the difference.
using Variant = std::variant<std::monostate, std::int16_t, std::int32_t, String>;

inline bool is_empty(const Variant& value) {
  return std::holds_alternative<std::monostate>(value);
}

/// The value as a 32-bit integer. Empty counts as 0. Text is read as a decimal number, rounded to the nearest whole
/// number with halves to even, or as hexadecimal or octal after "&H" or "&O"; blanks around it are ignored.
/// Raises 13 (type mismatch) for text that is no number and 6 (overflow) for one that does not fit.
std::int32_t to_int32(const Variant& value);

}  // namespace tornby
