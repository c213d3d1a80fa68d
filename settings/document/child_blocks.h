// The blocks inside a text, one after another.
#pragma once

#include <cstddef>
#include <optional>

#include "base/text.h"
#include "settings/document/tag_index.h"
#include "settings/document/text.h"

namespace tornby::document {

struct ChildBlock {
  String name;       // in upper case
  StringView inner;  // what stands between its tags
  Position end;      // right behind its closing tag
};

/// Walking through a text from front to back takes time in proportion to it, but for the sorting of its tags.
class ChildBlocks {
 public:
  /// `text` must outlive the object.
  explicit ChildBlocks(StringView text);

  /// The block that the tag at or after `position` names. That tag runs from the first "<" to the next ">"; its name is
  /// what it says in upper case, less any further "<". The block is the first in the text, from `position` on, with
  /// that name in its tags, letter for letter; so a name in lower case may lead to a block further on.
  /// Nothing when there is no such tag, when no block of its name is opened and then closed, or when `position` is 0 or
  /// less.
  std::optional<ChildBlock> at(Position position);

 private:
  void move_to(std::size_t tag);

  StringView text_;
  TagIndex tags_;  // by what stands between "<" and ">"
  // The tag that was last looked at, and the hash of its name.
  std::size_t tag_ = 0;
  std::size_t tag_end_ = 0;
  SequenceHash name_;
  // The walk asks for one position after the other, and what was found barren stays so: from any of these positions,
  // both included, the same "<" comes next (or none), and its name has no block from there on. So no tag is looked up
  // twice, and a walk over tags that are never closed takes a step for each.
  Position barren_from_ = 1;
  Position barren_to_ = 0;
};

}  // namespace tornby::document
