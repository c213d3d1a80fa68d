// Searching and cutting of text by 1-based positions, 0 for "not found".
#pragma once

#include <cstddef>

#include "base/text.h"

namespace tornby::document {

using Position = std::ptrdiff_t;

inline Position length(StringView text) {
  return static_cast<Position>(text.size());
}

/// The first position of `what`, which is not empty, at or after `from`, which is at least 1.
Position position_of(StringView text, StringView what, Position from = 1);

/// The same ignoring the case of the letters in `text`; `tag` begins with "<" and is in upper case.
Position position_of_tag(StringView text, StringView tag, Position from);
/// Whether the text begins so.
bool matches_tag(StringView text, StringView tag);

/// The `count` characters from `start` on, fewer where the text ends. Raises 5 (invalid procedure call or argument)
/// for a start before the text and for a negative count.
StringView cut(StringView text, Position start, Position count);
StringView cut(StringView text, Position start);

/// The text with every occurrence of `what` replaced; with an empty `what` the text as it is.
String replace_all(StringView text, StringView what, StringView replacement);

/// The text with its first occurrence of `what`, which is not empty, removed.
String remove_first(StringView text, StringView what);

struct Tags {
  String opening;
  String closing;
};

/// "<name>" and "</name>".
Tags make_tags(StringView name);

}  // namespace tornby::document
