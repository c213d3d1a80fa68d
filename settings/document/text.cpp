#include "settings/document/text.h"

#include <algorithm>
#include <utility>

#include "base/letter_case.h"
#include "base/runtime_error.h"
#include "base/search.h"

namespace tornby::document {
namespace {

Position as_position(std::size_t index) {
  return index == StringView::npos ? 0 : static_cast<Position>(index) + 1;
}

}  // namespace

Position position_of(StringView text, StringView what, Position from) {
  return as_position(find_text(text, what, static_cast<std::size_t>(from - 1)));
}

bool matches_tag(StringView text, StringView tag) {
  const auto same = [](char16_t in_tag, char16_t in_text) { return in_tag == upper(in_text); };
  return text.size() >= tag.size() && std::equal(tag.begin(), tag.end(), text.begin(), same);
}

Position position_of_tag(StringView text, StringView tag, Position from) {
  return as_position(find_ignoring_case(text, tag, static_cast<std::size_t>(from - 1)));
}

StringView cut(StringView text, Position start, Position count) {
  if (start < 1 || count < 0) throw RuntimeError(StandardError::invalid_procedure_call);
  if (start > length(text)) return {};
  return text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(count));
}

StringView cut(StringView text, Position start) {
  return cut(text, start, length(text));
}

String replace_all(StringView text, StringView what, StringView replacement) {
  if (what.empty()) return String(text);
  String result;
  std::size_t from = 0;
  for (std::size_t at; (at = find_text(text, what, from)) != StringView::npos; from = at + what.size())
    result.append(text.substr(from, at - from)).append(replacement);
  return result.append(text.substr(from));
}

String remove_first(StringView text, StringView what) {
  String result(text);
  if (const auto at = find_text(text, what); at != StringView::npos) result.erase(at, what.size());
  return result;
}

Tags make_tags(StringView name) {
  String opening, closing;
  opening.append(u"<").append(name).append(u">");
  closing.append(u"</").append(name).append(u">");
  return {std::move(opening), std::move(closing)};
}

}  // namespace tornby::document
