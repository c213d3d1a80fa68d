// Twelve bytes and sixteen digits a step, after Mula and Lemire ("Faster Base64 encoding and decoding using AVX2
// instructions", ACM Transactions on the Web 12(3), 2018): a shuffle of bytes is a table of sixteen entries, looked up
// sixteen times at once.
#include <tmmintrin.h>

#include "checksums/base64/kernels.h"

namespace tornby::base64 {
namespace {

constexpr std::size_t vector_size = 16;
constexpr std::size_t groups_a_vector = 4;
// A vector of bytes holds five groups and a byte; only the first four are used.
constexpr std::size_t groups_to_touch = 6;

__m128i load(const std::uint8_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}
void store(std::uint8_t* to, __m128i vector) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), vector);
}

/// Twelve bytes as sixteen numbers of six bits.
__m128i split(__m128i bytes) {
  // In each 32 bits: the second, first, third and second byte of a group.
  const __m128i in = _mm_shuffle_epi8(bytes, _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  // Multiplying shifts each 16 bits by its own distance.
  const __m128i first_and_third =
      _mm_mulhi_epu16(_mm_and_si128(in, _mm_set1_epi32(0x0FC0FC00)), _mm_set1_epi32(0x04000040));
  const __m128i second_and_fourth =
      _mm_mullo_epi16(_mm_and_si128(in, _mm_set1_epi32(0x003F03F0)), _mm_set1_epi32(0x01000010));
  return _mm_or_si128(first_and_third, second_and_fourth);
}

/// Sixteen numbers of six bits as twelve bytes; the last four bytes are 0.
__m128i join(__m128i values) {
  const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi32(0x01400140));
  const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
  return _mm_shuffle_epi8(groups, _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
}

/// The digits of sixteen numbers.
__m128i digits_of(__m128i values) {
  // The ranges of the alphabet by number: 13 is A to Z, 0 is a to z, 1 to 10 the decimal digits, 11 is "+", 12 is "/".
  const __m128i above = _mm_subs_epu8(values, _mm_set1_epi8(51));
  const __m128i is_upper = _mm_cmpgt_epi8(_mm_set1_epi8(26), values);
  const __m128i range = _mm_or_si128(above, _mm_and_si128(is_upper, _mm_set1_epi8(13)));
  constexpr char decimal = '0' - 52;
  const __m128i distance_of = _mm_setr_epi8('a' - 26, decimal, decimal, decimal, decimal, decimal, decimal, decimal,
                                            decimal, decimal, decimal, '+' - 62, '/' - 63, 'A', 0, 0);
  return _mm_add_epi8(values, _mm_shuffle_epi8(distance_of, range));
}

/// The numbers of sixteen digits. `legal` is false when something else is among them.
__m128i values_of(__m128i digits, bool& legal) {
  const __m128i low_half = _mm_set1_epi8(15);
  const __m128i high = _mm_and_si128(_mm_srli_epi32(digits, 4), low_half);
  const __m128i low = _mm_and_si128(digits, low_half);
  // For each half of a character, the reasons for which it may be none of the alphabet, as bits. One that both halves
  // have holds: 1 is column 2, 2 is column 3, 4 are columns 4 and 6, 8 are columns 5 and 7, 16 is any other column.
  const __m128i of_high = _mm_setr_epi8(16, 16, 1, 2, 4, 8, 4, 8, 16, 16, 16, 16, 16, 16, 16, 16);
  const __m128i of_low = _mm_setr_epi8(21, 17, 17, 17, 17, 17, 17, 17, 17, 17, 19, 26, 27, 27, 27, 26);
  const __m128i reasons = _mm_and_si128(_mm_shuffle_epi8(of_high, high), _mm_shuffle_epi8(of_low, low));
  legal = _mm_movemask_epi8(_mm_cmpeq_epi8(reasons, _mm_setzero_si128())) == 0xFFFF;
  // "/" stands in one column with "+", and counts as one column less.
  const __m128i is_slash = _mm_cmpeq_epi8(digits, _mm_set1_epi8('/'));
  const __m128i distance_of =
      _mm_setr_epi8(0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A', 26 - 'a', 26 - 'a', 0, 0, 0, 0, 0, 0, 0, 0);
  return _mm_add_epi8(digits, _mm_shuffle_epi8(distance_of, _mm_add_epi8(high, is_slash)));
}

}  // namespace

void encode_shuffled(const std::uint8_t* bytes, std::size_t groups, std::uint8_t* digits) {
  for (; groups >= groups_to_touch; groups -= groups_a_vector, bytes += 12, digits += vector_size)
    store(digits, digits_of(split(load(bytes))));
  encode_plain(bytes, groups, digits);
}

std::size_t decode_shuffled(const std::uint8_t* digits, std::size_t groups, std::uint8_t* bytes) {
  std::size_t done = 0;
  for (; groups - done >= groups_to_touch; done += groups_a_vector) {
    bool legal = false;
    const __m128i values = values_of(load(digits + 4 * done), legal);
    if (!legal) break;
    store(bytes + 3 * done, join(values));
  }
  return done + decode_plain(digits + 4 * done, groups - done, bytes + 3 * done);
}

}  // namespace tornby::base64
