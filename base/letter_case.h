// Letter case that keeps the length of a text.
#pragma once

#include <tornby/base/text.h>

namespace tornby {

namespace detail {
char16_t upper_beyond_ascii(char16_t unit);
}

/// The upper-case form of a letter, for every letter whose two forms are one UTF-16 unit each and lead to each other;
/// any other unit stays. So a sharp s, a dotless i and a micro sign stay, and no text changes its length. The same on
/// every system and under every user's regional settings.
inline char16_t upper(char16_t unit) {
  if (unit >= 0x80) return detail::upper_beyond_ascii(unit);
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
}

String upper(StringView text);

/// Whether the two texts are the same but for the case of their letters.
bool equal_ignoring_case(StringView a, StringView b);

}  // namespace tornby
