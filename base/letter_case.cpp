#include "base/letter_case.h"

#include <algorithm>
#include <iterator>

#include "base/letter_case_ranges.h"
#include "base/letter_vectors.h"

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

namespace {

[[gnu::noinline]] bool equal_unit_by_unit(StringView a, StringView b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return x == y || upper(x) == upper(y); });
}

}  // namespace

bool equal_ignoring_case(StringView a, StringView b) {
  if (a.size() != b.size()) return false;
#ifdef __SSE2__
  if (a.size() >= letter_vectors::least) {
    // No difference but in the case of "a" to "z" is none; any other may be one in the case of another letter.
    const __m128i none = _mm_setzero_si128();
    __m128i differences = none;
    const auto compare = [&](__m128i x, __m128i y) {
      const __m128i ignored = letter_vectors::lower_letters(_mm_or_si128(x, _mm_set1_epi16(0x20)));
      differences = _mm_or_si128(differences, _mm_andnot_si128(ignored, _mm_xor_si128(x, y)));
    };
    letter_vectors::for_each(a.size(), compare, a.data(), b.data());
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(differences, none)) == 0xFFFF) return true;
  }
#endif
  return equal_unit_by_unit(a, b);
}

}  // namespace tornby
