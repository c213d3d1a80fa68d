// Vectors of 512 bits whose bytes change places, for kernels on processors with AVX-512 VBMI: sixty-four bytes a step,
// or as many units. Only the sources of such kernels include this, and what they make of it stays their own.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace tornby {
namespace {

using Vector = __m512i;
constexpr std::size_t step = 64, half = step / 2;

inline Vector load(const void* from) {
  return _mm512_loadu_si512(from);
}
inline void store(void* to, Vector v) {
  _mm512_storeu_si512(to, v);
}

/// A byte for each place of a vector, by its number.
struct alignas(64) ByPlace {
  template <class Byte>
  constexpr explicit ByPlace(Byte byte) {
    for (unsigned place = 0; place < step; ++place) at[place] = static_cast<std::uint8_t>(byte(place));
  }
  std::uint8_t at[step];
};
inline Vector load(const ByPlace& bytes) {
  return load(bytes.at);
}

/// Asked without this, 32-bit code moves the masks to memory and back.
inline bool none(__mmask64 mask) {
  return _kortestz_mask64_u8(mask, mask) != 0;
}

/// Masks for the first `size` of a step, each half by itself: one of 64 bits would go through memory in 32-bit code.
struct Some {
  explicit Some(std::size_t size)
      : first(mask(size < half ? size : half)), second(mask(size < half ? 0 : size - half)) {}
  static __mmask32 mask(std::size_t size) { return size == 0 ? 0 : ~std::uint32_t{0} >> (half - size); }
  __mmask32 first, second;
};
inline Vector load_bytes(const std::uint8_t* from, const Some& some) {
  const __m256i low = _mm256_maskz_loadu_epi8(some.first, from);
  return _mm512_inserti64x4(_mm512_castsi256_si512(low), _mm256_maskz_loadu_epi8(some.second, from + half), 1);
}
inline void store_bytes(std::uint8_t* to, Vector v, const Some& some) {
  _mm256_mask_storeu_epi8(to, some.first, _mm512_castsi512_si256(v));
  _mm256_mask_storeu_epi8(to + half, some.second, _mm512_extracti64x4_epi64(v, 1));
}

/// The units of a step.
struct Units {
  Vector first, second;
};
/// Those whose values the bytes are.
inline Units units_of_bytes(Vector bytes) {
  return {_mm512_cvtepu8_epi16(_mm512_castsi512_si256(bytes)),
          _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(bytes, 1))};
}
inline void store_units(char16_t* to, const Units& units) {
  store(to, units.first);
  store(to + half, units.second);
}
inline void store_units(char16_t* to, const Units& units, const Some& some) {
  _mm512_mask_storeu_epi16(to, some.first, units.first);
  _mm512_mask_storeu_epi16(to + half, some.second, units.second);
}

}  // namespace
}  // namespace tornby
