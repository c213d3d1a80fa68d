// Sixty-four digits a step, where the processor permutes the bytes of 512 bits, after Mula and Lemire ("Base64 encoding
// and decoding at almost the speed of a memory copy", Software: Practice and Experience 50(2), 2020): a permutation is
// also a table of 64 or 128 entries, looked up for all bytes at once. Digits are units. Only the sources of such
// kernels include this, and what they make of it stays their own.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace tornby {
namespace {

using Vector = __m512i;
constexpr std::size_t step = 64, half = step / 2;

/// A byte for each place of a vector.
struct alignas(64) ByPlace {
  template <class Byte>
  constexpr explicit ByPlace(Byte byte) {
    for (unsigned place = 0; place < step; ++place) at[place] = static_cast<std::uint8_t>(byte(place));
  }
  std::uint8_t at[step];
};
Vector load(const ByPlace& bytes) {
  return _mm512_load_si512(&bytes);
}

/// Masks for the first `size` of a vector's bytes or of 64 units, each half by itself: a mask of 64 bits would go
/// through memory in 32-bit code.
struct Some {
  explicit Some(std::size_t size)
      : first(mask(size < half ? size : half)), second(mask(size < half ? 0 : size - half)) {}
  static __mmask32 mask(std::size_t size) { return size == 0 ? 0 : ~std::uint32_t{0} >> (half - size); }
  __mmask32 first, second;
};

/// The two codings of a `Form`, which says, beside `bytes_a_group` and `digits_a_group`:
/// - `spread`, the byte that each place is given at first, and `windows`, the bit of the eight bytes around it from
///   which on it takes its own six: the number of its digit in `alphabet`;
/// - `value_at`, the value of each ASCII character, 128 for what is no digit;
/// - `join(values)`, the way back, and `joined`, the places of the bytes in its result. Digits come to it in the order
///   of `packed`;
/// - `decode_plain`, which finds the group with anything else.
template <class Form>
class Permuted {
 public:
  static void encode(const std::uint8_t* bytes, std::size_t groups, char16_t* digits) {
    if (groups < groups_a_step) return encode_some(bytes, groups, digits);
    const std::size_t last = groups - groups_a_step;
    for (std::size_t done = 0; done < last; done += groups_a_step) encode_step(bytes, done, digits);
    encode_step(bytes, last, digits);  // overlaps the one before
  }

  static std::size_t decode(const char16_t* digits, std::size_t groups, std::uint8_t* bytes) {
    if (groups < groups_a_step) return decode_some(digits, groups, bytes);
    const std::size_t last = groups - groups_a_step;
    std::size_t done = 0;
    while (done < last && decode_step(digits, done, bytes)) done += groups_a_step;
    if (done >= last && decode_step(digits, last, bytes)) return groups;
    return done + decode_plain(digits, done, groups, bytes);
  }

 private:
  static constexpr std::size_t groups_a_step = step / Form::digits_a_group;
  static constexpr std::size_t bytes_a_step = groups_a_step * Form::bytes_a_group;

  static void encode_step(const std::uint8_t* bytes, std::size_t at, char16_t* digits) {
    const std::uint8_t* const from = bytes + at * Form::bytes_a_group;
    Vector in = _mm512_castsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)));
    if constexpr (bytes_a_step > half) {
      static_assert(bytes_a_step == half + 16);
      in = _mm512_inserti32x4(in, _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + half)), 2);
    }
    const Vector made = digits_of(in);
    _mm512_storeu_si512(digits + at * Form::digits_a_group, first_half(made));
    _mm512_storeu_si512(digits + at * Form::digits_a_group + half, second_half(made));
  }
  static void encode_some(const std::uint8_t* bytes, std::size_t groups, char16_t* digits) {
    if (groups == 0) return;  // perhaps from nowhere
    const Some from(groups * Form::bytes_a_group), to(groups * Form::digits_a_group);
    const __m256i first = _mm256_maskz_loadu_epi8(from.first, bytes);
    const __m256i second = _mm256_maskz_loadu_epi8(from.second, bytes + half);
    const Vector made = digits_of(_mm512_inserti64x4(_mm512_castsi256_si512(first), second, 1));
    _mm512_mask_storeu_epi16(digits, to.first, first_half(made));
    _mm512_mask_storeu_epi16(digits + half, to.second, second_half(made));
  }
  static Vector digits_of(Vector bytes) {
    const Vector spread = _mm512_permutexvar_epi8(load(Form::spread), bytes);
    return _mm512_permutexvar_epi8(_mm512_multishift_epi64_epi8(load(Form::windows), spread), load(Form::alphabet));
  }
  static Vector first_half(Vector digits) { return _mm512_cvtepu8_epi16(_mm512_castsi512_si256(digits)); }
  static Vector second_half(Vector digits) { return _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(digits, 1)); }

  static bool decode_step(const char16_t* digits, std::size_t at, std::uint8_t* bytes) {
    const char16_t* const from = digits + at * Form::digits_a_group;
    Vector made;
    if (!find_bytes(_mm512_loadu_si512(from), _mm512_loadu_si512(from + half), made)) return false;
    std::uint8_t* const to = bytes + at * Form::bytes_a_group;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm512_castsi512_si256(made));
    if constexpr (bytes_a_step > half) {
      static_assert(bytes_a_step == half + 16);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to + half), _mm512_extracti32x4_epi32(made, 2));
    }
    return true;
  }
  static std::size_t decode_some(const char16_t* digits, std::size_t groups, std::uint8_t* bytes) {
    if (groups == 0) return 0;
    const Some from(groups * Form::digits_a_group), to(groups * Form::bytes_a_group);
    const Vector some_digit = _mm512_set1_epi16('0');
    Vector made;
    if (!find_bytes(_mm512_mask_loadu_epi16(some_digit, from.first, digits),
                    _mm512_mask_loadu_epi16(some_digit, from.second, digits + half), made))
      return decode_plain(digits, 0, groups, bytes);
    _mm256_mask_storeu_epi8(bytes, to.first, _mm512_castsi512_si256(made));
    _mm256_mask_storeu_epi8(bytes + half, to.second, _mm512_extracti64x4_epi64(made, 1));
    return groups;
  }
  static std::size_t decode_plain(const char16_t* digits, std::size_t from, std::size_t to, std::uint8_t* bytes) {
    return Form::decode_plain(digits + from * Form::digits_a_group, to - from, bytes + from * Form::bytes_a_group);
  }
  /// The bytes of a step. Returns whether all characters are digits.
  static bool find_bytes(Vector first, Vector second, Vector& bytes) {
    const Vector characters = _mm512_packus_epi16(first, second);  // one that is no byte turns into 0 or 255
    const Vector values = _mm512_permutex2var_epi8(load(Form::value_at[0]), characters, load(Form::value_at[1]));
    bytes = _mm512_permutexvar_epi8(load(Form::joined), Form::join(values));
    const __mmask64 wrong = _mm512_movepi8_mask(_mm512_or_si512(values, characters));
    return _kortestz_mask64_u8(wrong, wrong) != 0;
  }
};

/// The place of a step's digit once its units are packed: by quarters of both vectors, in turns.
constexpr unsigned packed(unsigned digit) {
  constexpr unsigned units = half;
  const unsigned from_second = digit / units, quarter = digit % units / 8;
  return quarter * 16 + from_second * 8 + digit % 8;
}

}  // namespace
}  // namespace tornby
