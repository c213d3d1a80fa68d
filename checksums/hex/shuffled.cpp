// A vector of bytes a step: a shuffle of bytes is a table of sixteen entries, looked up for all of them at once. The
// last vector overlaps the one before.
#include "checksums/hex/kernels.h"
#include "checksums/vectors.h"

namespace tornby::hex::TORNBY_KERNEL {
namespace {

/// Stores the digits of the upper and those of the lower halves of the bytes, by turns.
template <class Digit>
void store_in_turns(Digit* digits, __m128i upper, __m128i lower) {
  Narrow::store_digits(digits, _mm_unpacklo_epi8(upper, lower));
  Narrow::store_digits(digits + Narrow::size, _mm_unpackhi_epi8(upper, lower));
}
__m128i in_storing_order(__m128i bytes) {
  return bytes;
}
/// Sixteen numbers of sixteen bits and sixteen more, as bytes.
__m128i packed(__m128i first, __m128i second) {
  return _mm_packus_epi16(first, second);
}
#ifdef __AVX2__
template <class Digit>
void store_in_turns(Digit* digits, __m256i upper, __m256i lower) {
  Wide::store_digits(digits, _mm256_unpacklo_epi8(upper, lower));
  Wide::store_digits(digits + Wide::size, _mm256_unpackhi_epi8(upper, lower));
}
/// The middle quarters change places, for what follows works within the halves.
__m256i in_storing_order(__m256i bytes) {
  return _mm256_permute4x64_epi64(bytes, 0xD8);
}
__m256i packed(__m256i first, __m256i second) {
  return in_storing_order(_mm256_packus_epi16(first, second));
}
#endif

template <class V, class Digit>
void encode_vector(const std::uint8_t* bytes, Digit* digits) {
  const auto digit_of =
      V::in_each_lane(_mm_setr_epi8('0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'));
  const auto low_half = V::all8(15);
  const auto in = in_storing_order(V::load(bytes));
  store_in_turns(digits, V::looked_up(digit_of, V::both(V::shifted_down16(in, 4), low_half)),
                 V::looked_up(digit_of, V::both(in, low_half)));
}

/// The values of digits; above 15 for any other character.
template <class V>
typename V::Vector values_of(typename V::Vector characters) {
  // A decimal digit comes to lie from 0xF6 to 0xFF, then from 0xF0 to 0xF9, where no other character gets.
  const auto above = V::difference_at_least_0(V::sum8(characters, V::all8(0xFF - '9')), V::all8(6));
  const auto decimal = V::difference8(above, V::all8(0xF0));
  const auto upper_case = V::both(characters, V::all8(0xDF));
  const auto letter = V::sum_at_most_255(V::difference8(upper_case, V::all8('A')), V::all8(10));
  return V::less8(decimal, letter);
}

template <class V, class Digit>
bool decode_vector(const Digit* digits, std::uint8_t* bytes) {
  const auto first = values_of<V>(V::load_digits(digits));
  const auto second = values_of<V>(V::load_digits(digits + V::size));
  const auto weights = V::all16(0x0110);  // 16 for the first of a pair, 1 for the second
  V::store(bytes, packed(V::pair_sums8(first, weights), V::pair_sums8(second, weights)));
  return !V::any_high_bit(V::sum_at_most_255(V::either(first, second), V::all8(0x80 - 16)));
}

template <class V, class Digit>
void encode_by(const std::uint8_t* bytes, std::size_t groups, Digit* digits) {
  std::size_t done = 0;
  for (; groups - done >= V::size; done += V::size) encode_vector<V>(bytes + done, digits + 2 * done);
  if (done != groups) encode_vector<V>(bytes + (groups - V::size), digits + 2 * (groups - V::size));
}

template <class V, class Digit>
std::size_t decode_by(const Digit* digits, std::size_t groups, std::uint8_t* bytes) {
  std::size_t done = 0;
  bool legal = true;
  for (; legal && groups - done >= V::size; done += V::size) legal = decode_vector<V>(digits + 2 * done, bytes + done);
  if (!legal)
    done -= V::size;
  else if (done == groups || decode_vector<V>(digits + 2 * (groups - V::size), bytes + (groups - V::size)))
    return groups;
  return done + decode_plain(digits + 2 * done, groups - done, bytes + done);
}

}  // namespace

template <class Digit>
void encode(const std::uint8_t* bytes, std::size_t groups, Digit* digits) {
  if (groups >= Widest::size) return encode_by<Widest>(bytes, groups, digits);
  if (groups >= Narrow::size) return encode_by<Narrow>(bytes, groups, digits);
  encode_plain(bytes, groups, digits);
}

template <class Digit>
std::size_t decode(const Digit* digits, std::size_t groups, std::uint8_t* bytes) {
  if (groups >= Widest::size) return decode_by<Widest>(digits, groups, bytes);
  if (groups >= Narrow::size) return decode_by<Narrow>(digits, groups, bytes);
  return decode_plain(digits, groups, bytes);
}

template void encode(const std::uint8_t*, std::size_t, std::uint8_t*);
template void encode(const std::uint8_t*, std::size_t, char16_t*);
template std::size_t decode(const std::uint8_t*, std::size_t, std::uint8_t*);
template std::size_t decode(const char16_t*, std::size_t, std::uint8_t*);

}  // namespace tornby::hex::TORNBY_KERNEL
