#include "settings/document/top_level.h"

#include <cstddef>
#include <optional>

#include "base/search.h"
#include "settings/document/tag_index.h"
#include "settings/document/text.h"

namespace tornby::document {
namespace {

/// The closing tags of a text by all that they say: each runs from a "</" to the next ">".
TagIndex index_closing_tags(StringView text) {
  TagIndex index;
  bool ended = false;
  SequenceHash tag;
  for (std::size_t i = text.size(); i-- > 0;) {
    if (text[i] == u'>') {
      ended = true;
      tag = {};
    } else if (ended) {
      tag.push_front(text[i]);
      if (text[i] == u'<' && text[i + 1] == u'/') index.add(tag, i);
    }
  }
  index.sort();
  return index;
}

/// The hash of what closes the tag that the caller moves along: the same with each "<" made "</".
class ClosingHash {
 public:
  explicit ClosingHash(StringView text) : text_(text) {}

  /// Moves on to the "<" at `tag`; false when no ">" follows it.
  bool move_to(std::size_t tag) {
    if (tag >= end_) {
      hash_ = {};
      tag_ = tag;
      end_ = text_.find(u'>', tag);
      if (end_ == StringView::npos) return false;
      for (std::size_t i = tag; i < end_; ++i) {
        hash_.push_back(text_[i]);
        if (text_[i] == u'<') hash_.push_back(u'/');
      }
    }
    for (; tag_ < tag; ++tag_) {
      hash_.pop_front(text_[tag_]);
      if (text_[tag_] == u'<') hash_.pop_front(u'/');
    }
    return true;
  }

  std::size_t end() const { return end_; }
  const SequenceHash& hash() const { return hash_; }

 private:
  StringView text_;
  std::size_t tag_ = 0;
  std::size_t end_ = 0;
  SequenceHash hash_;
};

}  // namespace

StringCollection top_level_tags(StringView text) {
  StringCollection tags;
  const TagIndex closing_tags = index_closing_tags(text);
  ClosingHash closing_hash(text);
  std::size_t from = 0;
  for (std::size_t at; (at = text.find(u'<', from)) != StringView::npos && closing_hash.move_to(at);) {
    from = at + 1;
    const std::size_t end = closing_hash.end();
    const std::optional<std::size_t> found = closing_tags.first_from(closing_hash.hash(), end);
    if (!found) continue;
    const StringView tag = text.substr(at, end - at + 1);
    const String closing = replace_all(tag, u"<", u"</");
    std::size_t place = *found;
    if (!text.substr(place).starts_with(closing))
      place = find_text(text, closing, end);  // another text has the same hash
    if (place == StringView::npos) continue;
    tags.add_with_key(String(tag));
    from = place + 1;
  }
  return tags;
}

}  // namespace tornby::document
