// Letter case that keeps the length of a text.
#pragma once

#include <cstddef>

#include <tornby/base/text.h>

namespace tornby {

/// The upper-case form of a letter, for every letter whose two forms are one UTF-16 unit each and lead to each other;
/// any other unit stays. So a sharp s, a dotless i and a micro sign stay, and no text changes its length. The same on
/// every system and under every user's regional settings.
char16_t upper(char16_t unit);

String upper(StringView text);

/// Whether the two texts are the same but for the case of their letters.
bool equal_ignoring_case(StringView a, StringView b);

/// The index, from 0, of the first occurrence of `what` in `text`, ignoring case; `StringView::npos` when there is
/// none.
std::size_t find_ignoring_case(StringView text, StringView what);

}  // namespace tornby
