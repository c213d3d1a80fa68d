// The text and byte types that every class shares.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tornby {

/// Text in UTF-16, two bytes a unit on every platform. What the interfaces call a character is one such unit, and
/// positions count from 1 with 0 for "not found", unless a member says otherwise.
using String = std::u16string;
using StringView = std::u16string_view;

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// Widens plain ASCII text, such as the decimal form of a number.
inline String widen(std::string_view ascii) {
  return String(ascii.begin(), ascii.end());
}

}  // namespace tornby
