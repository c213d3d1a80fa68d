// The same operations on 128 and on 256 bits, for kernels whose one source is compiled for both. Only such sources
// include this, and what they make of it stays their own.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace tornby {
namespace {

/// A constant of a loop, made once. With few registers a compiler would rather make it anew at each step than another.
template <class Vector>
Vector kept(Vector constant) {
  asm("" : "+x"(constant));
  return constant;
}

// Digits are bytes or units. A unit that is no byte is read as 0 or 255, neither of them a digit.
struct Narrow {
  using Vector = __m128i;
  static constexpr std::size_t size = 16;

  static Vector load(const void* from) { return _mm_loadu_si128(static_cast<const Vector*>(from)); }
  static void store(void* to, Vector v) { _mm_storeu_si128(static_cast<Vector*>(to), v); }
  static Vector load_digits(const std::uint8_t* from) { return load(from); }
  static Vector load_digits(const char16_t* from) { return _mm_packus_epi16(load(from), load(from + 8)); }
  static void store_digits(std::uint8_t* to, Vector v) { store(to, v); }
  static void store_digits(char16_t* to, Vector v) {
    store(to, _mm_unpacklo_epi8(v, all8(0)));
    store(to + 8, _mm_unpackhi_epi8(v, all8(0)));
  }
  static Vector all8(int value) { return _mm_set1_epi8(static_cast<char>(value)); }
  static Vector all16(int value) { return _mm_set1_epi16(static_cast<short>(value)); }
  static Vector all32(int value) { return _mm_set1_epi32(value); }
  static Vector in_each_lane(__m128i lane) { return lane; }

  static Vector both(Vector a, Vector b) { return _mm_and_si128(a, b); }
  static Vector either(Vector a, Vector b) { return _mm_or_si128(a, b); }
  static Vector differing(Vector a, Vector b) { return _mm_xor_si128(a, b); }
  static Vector sum8(Vector a, Vector b) { return _mm_add_epi8(a, b); }
  static Vector difference8(Vector a, Vector b) { return _mm_sub_epi8(a, b); }
  static Vector sum_at_most_255(Vector a, Vector b) { return _mm_adds_epu8(a, b); }
  static Vector difference_at_least_0(Vector a, Vector b) { return _mm_subs_epu8(a, b); }
  static Vector less8(Vector a, Vector b) { return _mm_min_epu8(a, b); }
  static Vector equal8(Vector a, Vector b) { return _mm_cmpeq_epi8(a, b); }
  static Vector greater8(Vector a, Vector b) { return _mm_cmpgt_epi8(a, b); }
  static Vector shifted_down16(Vector v, int bits) { return _mm_srli_epi16(v, bits); }
  static Vector high_product16(Vector a, Vector b) { return _mm_mulhi_epu16(a, b); }
  static Vector low_product16(Vector a, Vector b) { return _mm_mullo_epi16(a, b); }
  static Vector pair_sums8(Vector a, Vector b) { return _mm_maddubs_epi16(a, b); }
  static Vector pair_sums16(Vector a, Vector b) { return _mm_madd_epi16(a, b); }
  static Vector looked_up(Vector table, Vector index) { return _mm_shuffle_epi8(table, index); }
  static bool any_high_bit(Vector v) { return _mm_movemask_epi8(v) != 0; }
  static bool any_bit(Vector v) { return _mm_movemask_epi8(_mm_cmpeq_epi8(v, all8(0))) != 0xFFFF; }
};

#ifdef __AVX2__
struct Wide {
  using Vector = __m256i;
  static constexpr std::size_t size = 32;

  static Vector load(const void* from) { return _mm256_loadu_si256(static_cast<const Vector*>(from)); }
  static void store(void* to, Vector v) { _mm256_storeu_si256(static_cast<Vector*>(to), v); }
  static Vector load_digits(const std::uint8_t* from) { return load(from); }
  static Vector load_digits(const char16_t* from) {
    return _mm256_permute4x64_epi64(_mm256_packus_epi16(load(from), load(from + 16)), 0xD8);
  }
  static void store_digits(std::uint8_t* to, Vector v) { store(to, v); }
  static void store_digits(char16_t* to, Vector v) {
    store(to, _mm256_cvtepu8_epi16(_mm256_castsi256_si128(v)));
    store(to + 16, _mm256_cvtepu8_epi16(_mm256_extracti128_si256(v, 1)));
  }
  static Vector all8(int value) { return _mm256_set1_epi8(static_cast<char>(value)); }
  static Vector all16(int value) { return _mm256_set1_epi16(static_cast<short>(value)); }
  static Vector all32(int value) { return _mm256_set1_epi32(value); }
  static Vector in_each_lane(__m128i lane) { return _mm256_broadcastsi128_si256(lane); }

  static Vector both(Vector a, Vector b) { return _mm256_and_si256(a, b); }
  static Vector either(Vector a, Vector b) { return _mm256_or_si256(a, b); }
  static Vector differing(Vector a, Vector b) { return _mm256_xor_si256(a, b); }
  static Vector sum8(Vector a, Vector b) { return _mm256_add_epi8(a, b); }
  static Vector difference8(Vector a, Vector b) { return _mm256_sub_epi8(a, b); }
  static Vector sum_at_most_255(Vector a, Vector b) { return _mm256_adds_epu8(a, b); }
  static Vector difference_at_least_0(Vector a, Vector b) { return _mm256_subs_epu8(a, b); }
  static Vector less8(Vector a, Vector b) { return _mm256_min_epu8(a, b); }
  static Vector equal8(Vector a, Vector b) { return _mm256_cmpeq_epi8(a, b); }
  static Vector greater8(Vector a, Vector b) { return _mm256_cmpgt_epi8(a, b); }
  static Vector shifted_down16(Vector v, int bits) { return _mm256_srli_epi16(v, bits); }
  static Vector high_product16(Vector a, Vector b) { return _mm256_mulhi_epu16(a, b); }
  static Vector low_product16(Vector a, Vector b) { return _mm256_mullo_epi16(a, b); }
  static Vector pair_sums8(Vector a, Vector b) { return _mm256_maddubs_epi16(a, b); }
  static Vector pair_sums16(Vector a, Vector b) { return _mm256_madd_epi16(a, b); }
  static Vector looked_up(Vector table, Vector index) { return _mm256_shuffle_epi8(table, index); }  // within lanes
  static bool any_high_bit(Vector v) { return _mm256_movemask_epi8(v) != 0; }
  static bool any_bit(Vector v) { return _mm256_testz_si256(v, v) == 0; }
};
using Widest = Wide;
#else
using Widest = Narrow;
#endif

}  // namespace
}  // namespace tornby
