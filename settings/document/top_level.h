// The blocks of a document that stand in no other one.
#pragma once

#include "base/ordered_collection.h"
#include "base/text.h"

namespace tornby::document {

/// The opening tags of the top-level blocks, angle brackets included, each under itself as its key. Raises 457 when two
/// of them are the same but for their case.
StringCollection top_level_tags(StringView text);

}  // namespace tornby::document
