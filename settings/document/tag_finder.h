// Finds tags in a text that is searched again and again and changes now and then.
#pragma once

#include <cstddef>

#include "base/text.h"
#include "settings/document/tag_index.h"
#include "settings/document/text.h"

namespace tornby::document {

/// It reads through the text at first, and makes an index of it once so much has been read that the index pays.
class TagFinder {
 public:
  /// As position_of_tag. `text` is the same at each call, until it is forgotten.
  Position find(StringView text, StringView tag, Position from);

  /// The text is about to change.
  void forget();

 private:
  void build(StringView text);

  TagIndex tags_;  // by what stands between "<" and ">", in upper case
  bool built_ = false;
  std::size_t read_ = 0;  // characters, since the text changed
};

}  // namespace tornby::document
