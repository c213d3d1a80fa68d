#include "base/letter_case.h"

#include <algorithm>
#include <iterator>

#include "base/letter_case_ranges.h"

namespace tornby {
namespace {

bool same_letter(char16_t a, char16_t b) {
  return upper(a) == upper(b);
}

}  // namespace

char16_t upper(char16_t unit) {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
  const auto* range = std::lower_bound(std::begin(letter_case_ranges), std::end(letter_case_ranges), unit,
                                       [](const LetterCaseRange& r, char16_t u) { return r.last < u; });
  if (range == std::end(letter_case_ranges) || unit < range->first || (unit - range->first) % range->step != 0)
    return unit;
  return static_cast<char16_t>(unit + range->distance);
}

String upper(StringView text) {
  String result(text.size(), u'\0');
  std::transform(text.begin(), text.end(), result.begin(), [](char16_t unit) { return upper(unit); });
  return result;
}

bool equal_ignoring_case(StringView a, StringView b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), same_letter);
}

std::size_t find_ignoring_case(StringView text, StringView what) {
  const auto at = std::search(text.begin(), text.end(), what.begin(), what.end(), same_letter);
  return at == text.end() && !what.empty() ? StringView::npos : static_cast<std::size_t>(at - text.begin());
}

}  // namespace tornby
