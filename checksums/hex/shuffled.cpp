// Sixteen bytes a step: a shuffle of bytes is a table of sixteen entries, looked up sixteen times at once.
#include <tmmintrin.h>

#include "checksums/hex/kernels.h"

namespace tornby::hex {
namespace {

constexpr std::size_t vector_size = 16;

__m128i load(const std::uint8_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}
void store(std::uint8_t* to, __m128i vector) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), vector);
}

/// All bits of each byte that lies from `first` to `last`; both are ASCII. Bytes above 127 count as negative.
__m128i between(__m128i bytes, char first, char last) {
  return _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(static_cast<char>(first - 1))),
                       _mm_cmplt_epi8(bytes, _mm_set1_epi8(static_cast<char>(last + 1))));
}

/// The values of sixteen digits as eight bytes, in the low halves of eight words. Other characters clear bits of
/// `legal`.
__m128i values_of(__m128i digits, __m128i& legal) {
  const __m128i lower_case = _mm_or_si128(digits, _mm_set1_epi8(0x20));
  const __m128i is_decimal = between(digits, '0', '9');
  const __m128i is_letter = between(lower_case, 'a', 'f');
  legal = _mm_and_si128(legal, _mm_or_si128(is_decimal, is_letter));
  const __m128i decimal = _mm_and_si128(is_decimal, _mm_sub_epi8(digits, _mm_set1_epi8('0')));
  const __m128i letter = _mm_and_si128(is_letter, _mm_sub_epi8(lower_case, _mm_set1_epi8('a' - 10)));
  return _mm_maddubs_epi16(_mm_or_si128(decimal, letter), _mm_set1_epi16(0x0110));  // 16 times the first, 1 the second
}

}  // namespace

void encode_shuffled(const std::uint8_t* bytes, std::size_t groups, std::uint8_t* digits) {
  const __m128i digit_of =
      _mm_setr_epi8('0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A', 'B', 'C', 'D', 'E', 'F');
  const __m128i low_half = _mm_set1_epi8(15);
  for (; groups >= vector_size; groups -= vector_size, bytes += vector_size, digits += 2 * vector_size) {
    const __m128i in = load(bytes);
    const __m128i high = _mm_shuffle_epi8(digit_of, _mm_and_si128(_mm_srli_epi16(in, 4), low_half));
    const __m128i low = _mm_shuffle_epi8(digit_of, _mm_and_si128(in, low_half));
    store(digits, _mm_unpacklo_epi8(high, low));
    store(digits + vector_size, _mm_unpackhi_epi8(high, low));
  }
  encode_plain(bytes, groups, digits);
}

std::size_t decode_shuffled(const std::uint8_t* digits, std::size_t groups, std::uint8_t* bytes) {
  std::size_t done = 0;
  for (; groups - done >= vector_size; done += vector_size) {
    __m128i legal = _mm_set1_epi8(-1);
    const __m128i first = values_of(load(digits + 2 * done), legal);
    const __m128i second = values_of(load(digits + 2 * done + vector_size), legal);
    if (_mm_movemask_epi8(legal) != 0xFFFF) break;
    store(bytes + done, _mm_packus_epi16(first, second));
  }
  return done + decode_plain(digits + 2 * done, groups - done, bytes + done);
}

}  // namespace tornby::hex
