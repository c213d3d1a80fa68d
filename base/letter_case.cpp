#include "base/letter_case.h"

#include <algorithm>
#include <iterator>

#include "base/letter_case_ranges.h"

namespace tornby {

char16_t detail::upper_beyond_ascii(char16_t unit) {
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
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return x == y || upper(x) == upper(y); });
}

}  // namespace tornby
