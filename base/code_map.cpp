#include "base/code_map.h"

#include <algorithm>
#include <numeric>

namespace tornby {
#define TORNBY_VARIANT(name)                                                                                \
  namespace name {                                                                                          \
  std::size_t narrow(const char16_t* units, std::size_t size, std::uint8_t* codes, const CodeMap* map);     \
  std::size_t widen(const std::uint8_t* codes, std::size_t size, char16_t* units, const CharacterMap& map); \
  void widen_bytes(const std::uint8_t* bytes, std::size_t size, char16_t* units);                           \
  }
TORNBY_VARIANT(plain)
TORNBY_VARIANT(avx)
TORNBY_VARIANT(avx2)
TORNBY_VARIANT(permuted)

namespace {

constexpr CodeMapKernel list[] = {
#ifdef TORNBY_X86_KERNELS
    {"permuted", widest_vectors | wide_tables, permuted::narrow, permuted::widen, permuted::widen_bytes},
    {"avx2", wide_vectors, avx2::narrow, avx2::widen, avx2::widen_bytes},
    {"avx", newer_encoding, avx::narrow, avx::widen, avx::widen_bytes},
#endif
    {"plain", no_features, plain::narrow, plain::widen, plain::widen_bytes},
};

}  // namespace

constinit Chosen<CodeMapKernel> chosen_code_map(list);

namespace {

[[maybe_unused]] const bool has_choice = chosen_code_map.choose(list);

std::uint8_t lower_byte(unsigned unit) {
  return static_cast<std::uint8_t>(unit);
}
std::uint8_t upper_byte(unsigned unit) {
  return static_cast<std::uint8_t>(unit >> 8);
}

/// A run made longer as far as these codes go on with it.
CodeRun extended(CodeRun run, const UnitCodes& codes) {
  if (run.length == 0) return run;
  while (run.first > 0x80 && run.code > 0x80 && codes[run.first - 1u] == run.code - 1) {
    --run.first;
    --run.code;
    ++run.length;
  }
  while (run.code + run.length < 0x100 && run.first + run.length < 0x10000 &&
         codes[static_cast<std::size_t>(run.first + run.length)] == run.code + run.length)
    ++run.length;
  return run;
}

}  // namespace

CodeMap::CodeMap(const Characters& characters, const UnitCodes& codes, const CodeRun& some_run)
    : run(extended(some_run, codes)) {
  std::array<std::vector<char16_t>, 64> pages;
  for (std::size_t code = 0x80; code < characters.size(); ++code) {
    const char16_t character = characters[code];
    upper[code - 0x80] = upper_byte(character);
    if (codes[character] == code) pages[upper_byte(character) % pages.size()].push_back(character);
  }
  std::array<std::size_t, 64> order;
  std::iota(order.begin(), order.end(), 0u);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return pages[a].size() > pages[b].size(); });

  // The fullest page first, each by the first distance that finds all places free; one that finds none goes without.
  for (const std::size_t page : order)
    for (unsigned distance = 0; distance < std::size(code_at); ++distance) {
      const auto place = [&](char16_t unit) -> std::uint8_t& { return code_at[lower_byte(unit + distance)]; };
      const auto is_taken = [&](char16_t unit) { return place(unit) != 0; };
      if (std::any_of(pages[page].begin(), pages[page].end(), is_taken)) continue;
      shift[page] = lower_byte(distance);
      for (const char16_t unit : pages[page]) place(unit) = codes[unit];
      break;
    }
}

CharacterMap::CharacterMap(const Characters& characters, const CodeRun& some_run) : run(some_run) {
  for (std::size_t i = 0; i < std::size(lower); ++i) {
    lower[i] = lower_byte(characters[0x80 + i]);
    upper[i] = upper_byte(characters[0x80 + i]);
  }
}

std::span<const CodeMapKernel> code_map_kernels() {
  return list;
}

}  // namespace tornby
