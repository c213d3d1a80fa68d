// The letters of eight UTF-16 units at once, where the processor has SSE2.
#pragma once

#ifdef __SSE2__
#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace tornby::letter_vectors {

/// No text below this size is taken.
inline constexpr std::size_t least = 4;

inline __m128i load(const char16_t* at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

/// The first four units and the last four.
inline __m128i load_ends(const char16_t* at, std::size_t size) {
  const auto half = [](const char16_t* from) { return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)); };
  return _mm_unpacklo_epi64(half(at), half(at + size - 4));
}

/// Hands over vectors that cover texts of one size, step by step. Some units come twice.
template <class Take, class... Text>
[[gnu::always_inline]] inline void for_each(std::size_t size, Take take, const Text*... texts) {
  if (size <= 8) return take(load_ends(texts, size)...);
  for (std::size_t at = 0; at + 8 < size; at += 8) take(load(texts + at)...);
  take(load(texts + size - 8)...);
}

inline bool is_ascii(__m128i units) {
  constexpr int high_bits = 0xAAAA;
  return (_mm_movemask_epi8(_mm_adds_epu16(units, _mm_set1_epi16(0x7F80))) & high_bits) == 0;
}

/// The bit 0x20 in each unit that is "a" to "z".
inline __m128i lower_letters(__m128i units) {
  const __m128i beyond = _mm_subs_epu16(_mm_sub_epi16(units, _mm_set1_epi16('a')), _mm_set1_epi16('z' - 'a'));
  return _mm_and_si128(_mm_cmpeq_epi16(beyond, _mm_setzero_si128()), _mm_set1_epi16(0x20));
}

inline std::uint64_t sum_of_halves(__m128i numbers) {
  numbers = _mm_add_epi64(numbers, _mm_unpackhi_epi64(numbers, numbers));
#ifdef __x86_64__
  return static_cast<std::uint64_t>(_mm_cvtsi128_si64(numbers));
#else
  const auto low = [](__m128i of) { return static_cast<std::uint32_t>(_mm_cvtsi128_si32(of)); };
  return std::uint64_t{low(_mm_srli_epi64(numbers, 32))} << 32 | low(numbers);
#endif
}

}  // namespace tornby::letter_vectors
#endif
