// Searching a text for another, in time in proportion to both, whatever they are.
#pragma once

#include <cstddef>

#include "base/text.h"

namespace tornby {

/// The index, from 0, of the first occurrence of `what`, which is not empty, in `text` at or after `from`;
/// `StringView::npos` when there is none.
std::size_t find_text(StringView text, StringView what, std::size_t from = 0);

/// The same ignoring case (base/letter_case.h).
std::size_t find_ignoring_case(StringView text, StringView what, std::size_t from = 0);

}  // namespace tornby
