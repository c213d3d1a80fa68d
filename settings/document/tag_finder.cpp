#include "settings/document/tag_finder.h"

#include "base/letter_case.h"

namespace tornby::document {
namespace {

constexpr std::size_t reads_that_an_index_costs = 12;  // passes over the text

}  // namespace

Position TagFinder::find(StringView text, StringView tag, Position from) {
  const StringView name = tag.substr(1, tag.size() - 2);
  if (name.find_first_of(u"<>") != StringView::npos) return position_of_tag(text, tag, from);
  if (!built_ && read_ > reads_that_an_index_costs * text.size()) build(text);
  if (!built_) {
    const Position found = position_of_tag(text, tag, from);
    read_ += static_cast<std::size_t>((found == 0 ? length(text) : found) - from + 1);
    return found;
  }
  SequenceHash hash;
  for (const char16_t unit : name) hash.push_back(unit);
  const auto place = tags_.first_from(hash, static_cast<std::size_t>(from - 1));
  if (!place) return 0;
  const auto position = static_cast<Position>(*place) + 1;
  // Another tag may have the same hash.
  return matches_tag(text.substr(*place), tag) ? position : position_of_tag(text, tag, from);
}

void TagFinder::forget() {
  tags_ = {};
  built_ = false;
  read_ = 0;
}

void TagFinder::build(StringView text) {
  index_tags(text, tags_, [](char16_t unit) { return upper(unit); });
  built_ = true;
}

}  // namespace tornby::document
