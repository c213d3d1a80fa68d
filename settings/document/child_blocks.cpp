#include "settings/document/child_blocks.h"

#include "base/letter_case.h"
#include "base/search.h"

namespace tornby::document {
namespace {

bool is_bracket(char16_t unit) {
  return unit == u'<' || unit == u'>';
}

}  // namespace

ChildBlocks::ChildBlocks(StringView text) : text_(text) {
  index_tags(text, tags_, [](char16_t unit) { return unit; });
}

/// Brings the hash of the name up to date. Tags that share their ">" share the work.
void ChildBlocks::move_to(std::size_t tag) {
  if (tag < tag_ || tag >= tag_end_) {
    name_ = {};
    tag_ = tag;
    tag_end_ = text_.find(u'>', tag);
    if (tag_end_ == StringView::npos) return;
    for (std::size_t i = tag; i < tag_end_; ++i)
      if (!is_bracket(text_[i])) name_.push_back(upper(text_[i]));
  }
  for (; tag_ < tag; ++tag_)
    if (!is_bracket(text_[tag_])) name_.pop_front(upper(text_[tag_]));
}

std::optional<ChildBlock> ChildBlocks::at(Position position) {
  if (position < 1 || (position >= barren_from_ && position <= barren_to_)) return std::nullopt;
  const auto barren_up_to = [&](Position last) {
    barren_from_ = position;
    barren_to_ = last;
    return std::nullopt;
  };
  const std::size_t tag = text_.find(u'<', static_cast<std::size_t>(position - 1));
  if (tag == StringView::npos) return barren_up_to(length(text_));
  move_to(tag);
  if (tag_end_ == StringView::npos) return barren_up_to(length(text_));

  SequenceHash closing_name = name_;
  closing_name.push_front(u'/');
  auto opening = tags_.first_from(name_, tag);
  auto closing = opening ? tags_.first_from(closing_name, *opening) : std::nullopt;
  if (!closing) return barren_up_to(static_cast<Position>(tag) + 1);

  String name;
  for (const char16_t unit : text_.substr(tag, tag_end_ - tag))
    if (!is_bracket(unit)) name += upper(unit);
  const Tags tags = make_tags(name);
  if (!text_.substr(*opening).starts_with(tags.opening) || !text_.substr(*closing).starts_with(tags.closing)) {
    // Another text has the same hash.
    opening = find_text(text_, tags.opening, tag);
    closing = *opening == StringView::npos ? StringView::npos : find_text(text_, tags.closing, *opening);
    if (*closing == StringView::npos) return barren_up_to(static_cast<Position>(tag) + 1);
  }
  const std::size_t inner = *opening + tags.opening.size();
  return ChildBlock{std::move(name), text_.substr(inner, *closing - inner),
                    static_cast<Position>(*closing + tags.closing.size()) + 1};
}

}  // namespace tornby::document
