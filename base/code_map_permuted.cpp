// Sixty-four characters a step: a permutation of bytes is a table of 128 entries, looked up for all of them at once.
#include <cstring>

#include "base/code_map.h"
#include "base/permuting_vectors.h"

namespace tornby::TORNBY_KERNEL {
namespace {

static_assert(step == code_stride);

// Where the bytes of a vector come from, in two others.
constexpr ByPlace lower_bytes{[](unsigned place) { return 2 * place; }};
constexpr ByPlace upper_bytes{[](unsigned place) { return 2 * place + 1; }};
constexpr unsigned in_turns(unsigned place) {
  return place / 2 + place % 2 * 64;
}
constexpr ByPlace first_pairs{in_turns};
constexpr ByPlace last_pairs{[](unsigned place) { return 32 + in_turns(place); }};

Vector picked(const ByPlace& order, Vector a, Vector b) {
  return _mm512_permutex2var_epi8(a, load(order), b);
}
/// Takes the lower seven bits of each index.
Vector looked_up_in_128(const std::uint8_t* table, Vector index) {
  return _mm512_permutex2var_epi8(load(table), index, load(table + step));
}
Vector looked_up_in_256(const std::uint8_t* table, Vector index) {
  return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), looked_up_in_128(table, index),
                                looked_up_in_128(table + 128, index));
}

/// The codes of a step. Returns whether that is what they are.
bool find_codes(Vector first, Vector second, const CodeMap* map, Vector& codes) {
  const Vector lower = picked(lower_bytes, first, second);
  codes = lower;
  if (none(_mm512_test_epi16_mask(_mm512_or_si512(first, second), _mm512_set1_epi16(~0x7F)))) return true;
  if (!map) return false;
  const Vector upper = picked(upper_bytes, first, second);
  const Vector high_bit = _mm512_set1_epi8(static_cast<char>(0x80));
  const Vector beyond_ascii = _mm512_or_si512(upper, _mm512_and_si512(lower, high_bit));
  const __mmask64 others = _mm512_test_epi8_mask(beyond_ascii, beyond_ascii);
  const Vector place = _mm512_add_epi8(lower, _mm512_permutexvar_epi8(upper, load(map->shift)));
  const Vector code = looked_up_in_256(map->code_at, place);
  codes = _mm512_mask_blend_epi8(others, lower, code);
  const Vector wrong = _mm512_xor_si512(looked_up_in_128(map->upper, code), upper);
  const Vector wrong_or_none = _mm512_or_si512(wrong, _mm512_andnot_si512(code, high_bit));
  return none(_mm512_mask_test_epi8_mask(others, wrong_or_none, wrong_or_none));
}

Units units_of(Vector codes, const CharacterMap& map) {
  const __mmask64 others = _mm512_movepi8_mask(codes);
  if (none(others)) return units_of_bytes(codes);
  const Vector lower = _mm512_mask_blend_epi8(others, codes, looked_up_in_128(map.lower, codes));
  const Vector upper = _mm512_maskz_mov_epi8(others, looked_up_in_128(map.upper, codes));
  return {picked(first_pairs, lower, upper), picked(last_pairs, lower, upper)};
}

template <class Convert>
void widen_by(Convert convert, const std::uint8_t* codes, std::size_t size, char16_t* units) {
  std::size_t done = 0;
  for (; size - done >= step; done += step) store_units(units + done, convert(load(codes + done)));
  if (done == size) return;
  const Some rest(size - done);
  store_units(units + done, convert(load_bytes(codes + done, rest)), rest);
}

/// A vector's units each.
bool are_ascii(__m512i first, __m512i last) {
  return _mm512_test_epi16_mask(_mm512_or_si512(first, last), _mm512_set1_epi16(~0x7F)) == 0;
}
bool are_ascii(__m256i first, __m256i last) {
  return _mm256_test_epi16_mask(_mm256_or_si256(first, last), _mm256_set1_epi16(~0x7F)) == 0;
}
void store_lower_bytes(std::uint8_t* to, __m512i units) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm512_cvtepi16_epi8(units));
}
void store_lower_bytes(std::uint8_t* to, __m256i units) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_cvtepi16_epi8(units));
}

/// A vector of units and as many again at most, if they are ASCII: the first and the last, which may overlap. What is
/// stored without a mask is read again at once.
template <class Vector>
bool narrow_ends(const char16_t* units, std::size_t size, std::uint8_t* codes) {
  constexpr std::size_t length = sizeof(Vector) / sizeof *units;
  Vector first, last;
  std::memcpy(&first, units, sizeof first);
  std::memcpy(&last, units + size - length, sizeof last);
  if (!are_ascii(first, last)) return false;
  store_lower_bytes(codes + size - length, last);
  store_lower_bytes(codes, first);
  return true;
}

}  // namespace

std::size_t narrow(const char16_t* units, std::size_t size, std::uint8_t* codes, const CodeMap* map) {
  if (size < step && size >= half && narrow_ends<__m512i>(units, size, codes)) return size;
  if (size < half && size >= half / 2 && narrow_ends<__m256i>(units, size, codes)) return size;
  Vector found;
  std::size_t done = 0;
  for (; size - done >= step; done += step) {
    if (!find_codes(load(units + done), load(units + done + half), map, found)) return done;
    store(codes + done, found);
  }
  if (done == size) return done;
  const Some rest(size - done);
  if (!find_codes(_mm512_maskz_loadu_epi16(rest.first, units + done),
                  _mm512_maskz_loadu_epi16(rest.second, units + done + half), map, found))
    return done;
  store_bytes(codes + done, found, rest);
  return size;
}

std::size_t widen(const std::uint8_t* codes, std::size_t size, char16_t* units, const CharacterMap& map) {
  widen_by([&map](Vector some) { return units_of(some, map); }, codes, size, units);
  return size;
}

void widen_bytes(const std::uint8_t* bytes, std::size_t size, char16_t* units) {
  widen_by(units_of_bytes, bytes, size, units);
}

}  // namespace tornby::TORNBY_KERNEL
