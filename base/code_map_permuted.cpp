// Sixty-four characters a step: a permutation of bytes is a table of 128 entries, looked up for all of them at once.
#include <immintrin.h>

#include <cstring>

#include "base/code_map.h"

namespace tornby::TORNBY_KERNEL {
namespace {

using Vector = __m512i;
constexpr std::size_t step = code_stride, half = step / 2;

Vector load(const void* from) {
  return _mm512_loadu_si512(from);
}
void store(void* to, Vector v) {
  _mm512_storeu_si512(to, v);
}

/// Where the bytes of a vector come from, in two others.
struct Order {
  alignas(64) std::uint8_t place[step];
};
constexpr Order every_second(unsigned first) {
  Order order{};
  for (unsigned i = 0; i < step; ++i) order.place[i] = static_cast<std::uint8_t>(2 * i + first);
  return order;
}
constexpr Order in_turns(unsigned first) {
  Order order{};
  for (unsigned i = 0; i < step; ++i) order.place[i] = static_cast<std::uint8_t>(first + i / 2 + (i % 2) * step);
  return order;
}
constexpr Order lower_bytes = every_second(0), upper_bytes = every_second(1);
constexpr Order first_pairs = in_turns(0), last_pairs = in_turns(half);

Vector picked(const Order& order, Vector a, Vector b) {
  return _mm512_permutex2var_epi8(a, load(order.place), b);
}
/// Takes the lower seven bits of each index.
Vector looked_up_in_128(const std::uint8_t* table, Vector index) {
  return _mm512_permutex2var_epi8(load(table), index, load(table + step));
}
Vector looked_up_in_256(const std::uint8_t* table, Vector index) {
  return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), looked_up_in_128(table, index),
                                looked_up_in_128(table + 128, index));
}

/// Asked without this, 32-bit code moves the masks to memory and back.
bool none(__mmask64 mask) {
  return _kortestz_mask64_u8(mask, mask) != 0;
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

struct Units {
  Vector first, second;
};
Units units_of_bytes(Vector bytes) {
  return {_mm512_cvtepu8_epi16(_mm512_castsi512_si256(bytes)),
          _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(bytes, 1))};
}
Units units_of(Vector codes, const CharacterMap& map) {
  const __mmask64 others = _mm512_movepi8_mask(codes);
  if (none(others)) return units_of_bytes(codes);
  const Vector lower = _mm512_mask_blend_epi8(others, codes, looked_up_in_128(map.lower, codes));
  const Vector upper = _mm512_maskz_mov_epi8(others, looked_up_in_128(map.upper, codes));
  return {picked(first_pairs, lower, upper), picked(last_pairs, lower, upper)};
}

/// Masks for the first `size` of a step, each half by itself.
struct Some {
  explicit Some(std::size_t size)
      : first(mask(size < half ? size : half)), second(mask(size < half ? 0 : size - half)) {}
  static __mmask32 mask(std::size_t size) { return size == 0 ? 0 : ~std::uint32_t{0} >> (half - size); }
  __mmask32 first, second;
};
Vector load_bytes(const std::uint8_t* from, const Some& some) {
  const __m256i low = _mm256_maskz_loadu_epi8(some.first, from);
  return _mm512_inserti64x4(_mm512_castsi256_si512(low), _mm256_maskz_loadu_epi8(some.second, from + half), 1);
}
void store_bytes(std::uint8_t* to, Vector v, const Some& some) {
  _mm256_mask_storeu_epi8(to, some.first, _mm512_castsi512_si256(v));
  _mm256_mask_storeu_epi8(to + half, some.second, _mm512_extracti64x4_epi64(v, 1));
}

template <class Convert>
void widen_by(Convert convert, const std::uint8_t* codes, std::size_t size, char16_t* units) {
  std::size_t done = 0;
  for (; size - done >= step; done += step) {
    const Units made = convert(load(codes + done));
    store(units + done, made.first);
    store(units + done + half, made.second);
  }
  if (done == size) return;
  const Some rest(size - done);
  const Units made = convert(load_bytes(codes + done, rest));
  _mm512_mask_storeu_epi16(units + done, rest.first, made.first);
  _mm512_mask_storeu_epi16(units + done + half, rest.second, made.second);
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
