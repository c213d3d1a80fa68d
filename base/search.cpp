#include "base/search.h"

#include <algorithm>
#include <vector>

#include "base/letter_case.h"

namespace tornby {
namespace {

/// Knuth, Morris and Pratt, "Fast pattern matching in strings", SIAM Journal on Computing 6(2), 1977: after a mismatch
/// the part that did match says how far the pattern can move, so no character of the text is looked at again.
template <class Unit>
std::size_t find_by_table(StringView text, StringView what, std::size_t from, Unit unit) {
  // borders[n]: how much of the first n characters of `what`, but not all, ends them as well as beginning them.
  std::vector<std::size_t> borders(what.size() + 1);
  const auto extend = [&](std::size_t matched, char16_t next) {
    while (matched > 0 && unit(what[matched]) != next) matched = borders[matched];
    return unit(what[matched]) == next ? matched + 1 : 0;
  };
  for (std::size_t n = 1; n < what.size(); ++n) borders[n + 1] = extend(borders[n], unit(what[n]));
  std::size_t matched = 0;
  for (std::size_t i = from; i < text.size(); ++i) {
    matched = extend(matched, unit(text[i]));
    if (matched == what.size()) return i + 1 - matched;
  }
  return StringView::npos;
}

/// Tries one place after the other, as long as that costs little: which it does but for texts that repeat themselves.
template <class Unit>
std::size_t find_by(StringView text, StringView what, std::size_t from, Unit unit) {
  constexpr std::size_t small_cost = 64;
  const char16_t first = unit(what.front());
  const auto is_first = [&](char16_t in_text) { return unit(in_text) == first; };
  const auto same = [&](char16_t in_what, char16_t in_text) { return unit(in_what) == unit(in_text); };
  std::size_t in_vain = 0;
  for (std::size_t at = from; at <= text.size() && text.size() - at >= what.size(); ++at) {
    at = static_cast<std::size_t>(std::find_if(text.begin() + at, text.end(), is_first) - text.begin());
    const auto matched = std::mismatch(what.begin(), what.end(), text.begin() + at, text.end(), same).first;
    if (matched == what.end()) return at;
    in_vain += static_cast<std::size_t>(matched - what.begin());
    if (in_vain > at - from + small_cost) return find_by_table(text, what, at + 1, unit);
  }
  return StringView::npos;
}

}  // namespace

std::size_t find_text(StringView text, StringView what, std::size_t from) {
  return find_by(text, what, from, [](char16_t unit) { return unit; });
}

std::size_t find_ignoring_case(StringView text, StringView what, std::size_t from) {
  return find_by(text, what, from, [](char16_t unit) { return upper(unit); });
}

}  // namespace tornby
