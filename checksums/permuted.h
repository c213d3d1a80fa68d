// Sixty-four digits a step, where the processor permutes the bytes of 512 bits, after Mula and Lemire ("Base64 encoding
// and decoding at almost the speed of a memory copy", Software: Practice and Experience 50(2), 2020): a permutation is
// also a table of 64 or 128 entries, looked up for all bytes at once. Digits are units. Only the sources of such
// kernels include this, and what they make of it stays their own.
#pragma once

#include "base/permuting_vectors.h"

namespace tornby {
namespace {

/// The two codings of a `Form`, which says, beside `bytes_a_group` and `digits_a_group`:
/// - `spread`, the byte that each place is given at first, and `windows`, the bit of the eight bytes around it from
///   which on it takes its own six: the number of its digit in `alphabet`;
/// - `value_of(character)`, below 128: its value as a digit, 128 for any other;
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
  static constexpr ByPlace first_values{Form::value_of};
  static constexpr ByPlace last_values{[](unsigned place) { return Form::value_of(64 + place); }};

  static void encode_step(const std::uint8_t* bytes, std::size_t at, char16_t* digits) {
    const std::uint8_t* const from = bytes + at * Form::bytes_a_group;
    Vector in = _mm512_castsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)));
    if constexpr (bytes_a_step > half) {
      static_assert(bytes_a_step == half + 16);
      in = _mm512_inserti32x4(in, _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + half)), 2);
    }
    store_units(digits + at * Form::digits_a_group, digits_of(in));
  }
  static void encode_some(const std::uint8_t* bytes, std::size_t groups, char16_t* digits) {
    if (groups == 0) return;  // perhaps from nowhere
    const Some from(groups * Form::bytes_a_group), to(groups * Form::digits_a_group);
    store_units(digits, digits_of(load_bytes(bytes, from)), to);
  }
  static Units digits_of(Vector bytes) {
    const Vector spread = _mm512_permutexvar_epi8(load(Form::spread), bytes);
    const Vector values = _mm512_multishift_epi64_epi8(load(Form::windows), spread);
    return units_of_bytes(_mm512_permutexvar_epi8(values, load(Form::alphabet)));
  }

  static bool decode_step(const char16_t* digits, std::size_t at, std::uint8_t* bytes) {
    const char16_t* const from = digits + at * Form::digits_a_group;
    Vector made;
    if (!find_bytes(load(from), load(from + half), made)) return false;
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
    store_bytes(bytes, made, to);
    return groups;
  }
  static std::size_t decode_plain(const char16_t* digits, std::size_t from, std::size_t to, std::uint8_t* bytes) {
    return Form::decode_plain(digits + from * Form::digits_a_group, to - from, bytes + from * Form::bytes_a_group);
  }
  /// The bytes of a step. Returns whether all characters are digits.
  static bool find_bytes(Vector first, Vector second, Vector& bytes) {
    const Vector characters = _mm512_packus_epi16(first, second);  // one that is no byte turns into 0 or 255
    const Vector values = _mm512_permutex2var_epi8(load(first_values), characters, load(last_values));
    bytes = _mm512_permutexvar_epi8(load(Form::joined), Form::join(values));
    return none(_mm512_movepi8_mask(_mm512_or_si512(values, characters)));
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
