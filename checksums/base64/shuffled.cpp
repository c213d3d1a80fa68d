// A vector of digits a step, after Mula and Lemire ("Faster Base64 encoding and decoding using AVX2 instructions", ACM
// Transactions on the Web 12(3), 2018): a shuffle of bytes is a table of sixteen entries, looked up for all of them at
// once. A lane of sixteen digits stands for twelve bytes. The last vector overlaps the one before.
#include <cstring>

#include "checksums/base64/kernels.h"
#include "checksums/vectors.h"

namespace tornby::base64::TORNBY_KERNEL {
namespace {

[[maybe_unused]] constexpr std::size_t bytes_a_lane = 12;
constexpr std::size_t digits_a_lane = 16;
constexpr std::size_t groups_a_lane = 4;

template <class V>
constexpr std::size_t groups_a_vector = groups_a_lane* V::size / digits_a_lane;

/// In each 32 bits, the second, first, third and second byte of a group; the twelve bytes start at `first`.
template <int first>
__m128i spread_order() {
  return _mm_add_epi8(_mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10), _mm_set1_epi8(first));
}

/// The bytes of a vector of digits, spread out. Four bytes before them are read as well, and four behind a wide vector.
__m128i spread(Narrow, const std::uint8_t* bytes) {
  return Narrow::looked_up(Narrow::load(bytes - 4), spread_order<4>());
}
#ifdef __AVX2__
__m256i lanes(__m128i first, __m128i second) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(first), second, 1);
}
__m256i spread(Wide, const std::uint8_t* bytes) {
  return Wide::looked_up(Wide::load(bytes - 4), lanes(spread_order<4>(), spread_order<0>()));
}
/// The same for the first and the last of a block: nothing else is read.
__m256i spread_alone(const std::uint8_t* bytes) {
  return Wide::looked_up(lanes(Narrow::load(bytes), Narrow::load(bytes + 8)),
                         lanes(spread_order<0>(), spread_order<4>()));
}
#endif

/// Numbers of six bits, from groups that are spread out.
template <class V>
typename V::Vector split(typename V::Vector in) {
  // Multiplying shifts each 16 bits by its own distance.
  const auto first_and_third = V::high_product16(V::both(in, V::all32(0x0FC0FC00)), V::all32(0x04000040));
  const auto second_and_fourth = V::low_product16(V::both(in, V::all32(0x003F03F0)), V::all32(0x01000010));
  return V::either(first_and_third, second_and_fourth);
}

/// The digits of such numbers.
template <class V>
typename V::Vector digits_of(typename V::Vector values) {
  // The ranges of the alphabet by number: 0 is A to Z, 1 is a to z, 2 to 11 the decimal digits, 12 is "+", 13 is "/".
  const auto above = V::difference_at_least_0(values, V::all8(51));
  const auto range = V::difference8(above, V::greater8(values, V::all8(25)));
  constexpr char decimal = '0' - 52;
  const auto distance_of =
      V::in_each_lane(_mm_setr_epi8('A', 'a' - 26, decimal, decimal, decimal, decimal, decimal, decimal, decimal,
                                    decimal, decimal, decimal, '+' - 62, '/' - 63, 0, 0));
  return V::sum8(values, V::looked_up(distance_of, range));
}

/// The alphabet, for those who read it.
template <class V>
class Alphabet {
 public:
  using Vector = typename V::Vector;

  /// The numbers of digits. `reasons` are the bits that other characters have.
  Vector values_of(Vector digits, Vector& reasons) const {
    const Vector high = V::both(V::shifted_down16(digits, 4), slash_);
    const Vector low = V::both(digits, slash_);
    reasons = V::both(V::looked_up(of_high_, high), V::looked_up(of_low_, low));
    // "/" stands in one column with "+", and counts as one column less.
    const Vector is_slash = V::equal8(digits, slash_);
    return V::sum8(digits, V::looked_up(distance_of_, V::sum8(high, is_slash)));
  }

 private:
  static Vector table(__m128i lane) { return kept(V::in_each_lane(lane)); }

  // Beside the lower half of a character a bit that no look-up heeds, so that the mask is also a digit to compare with.
  const Vector slash_ = kept(V::all8('/'));
  // For each half of a character, the reasons for which it may be none of the alphabet, as bits. One that both halves
  // have holds: 1 is column 2, 2 is column 3, 4 are columns 4 and 6, 8 are columns 5 and 7, 16 is any other column.
  const Vector of_high_ = table(_mm_setr_epi8(16, 16, 1, 2, 4, 8, 4, 8, 16, 16, 16, 16, 16, 16, 16, 16));
  const Vector of_low_ = table(_mm_setr_epi8(21, 17, 17, 17, 17, 17, 17, 17, 17, 17, 19, 26, 27, 27, 27, 26));
  const Vector distance_of_ =
      table(_mm_setr_epi8(0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A', 26 - 'a', 26 - 'a', 0, 0, 0, 0, 0, 0, 0, 0));
};

/// The bytes of four groups of 32 bits, for two lanes: where the instruction reads it itself, no register is taken.
alignas(32) constexpr std::int8_t joined_order[] = {2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1,
                                                    2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1};

/// Sixteen numbers of six bits a lane as twelve bytes; the last four bytes are 0.
template <class V>
typename V::Vector join(typename V::Vector values) {
  const auto pairs = V::pair_sums8(values, V::all32(0x01400140));
  const auto groups = V::pair_sums16(pairs, V::all32(0x00011000));
  return V::looked_up(groups, V::load(joined_order));
}

/// Stores the twelve bytes of a lane and nothing beyond.
void store_lane(std::uint8_t* bytes, __m128i lane) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), lane);
  const int last = _mm_cvtsi128_si32(_mm_srli_si128(lane, 8));
  std::memcpy(bytes + 8, &last, sizeof last);
}
/// Stores the bytes of a vector; the last lane's may be followed by four of no meaning.
void store_joined(std::uint8_t* bytes, __m128i joined, bool more_follow) {
  if (more_follow)
    Narrow::store(bytes, joined);
  else
    store_lane(bytes, joined);
}
#ifdef __AVX2__
void store_joined(std::uint8_t* bytes, __m256i joined, bool more_follow) {
  Narrow::store(bytes, _mm256_castsi256_si128(joined));
  store_joined(bytes + bytes_a_lane, _mm256_extracti128_si256(joined, 1), more_follow);
}
#endif

template <class V, class Digit>
void store_digits(Digit* digits, typename V::Vector spread_bytes) {
  V::store_digits(digits, digits_of<V>(split<V>(spread_bytes)));
}

/// Needs two groups and a vector of them.
template <class Digit>
void encode_narrow(const std::uint8_t* bytes, std::size_t groups, Digit* digits) {
  constexpr std::size_t step = groups_a_vector<Narrow>;
  std::size_t done = 2;
  encode_plain(bytes, done, digits);
  for (; groups - done >= step; done += step)
    store_digits<Narrow>(digits + 4 * done, spread(Narrow(), bytes + 3 * done));
  const std::size_t last = groups - step;
  store_digits<Narrow>(digits + 4 * last, spread(Narrow(), bytes + 3 * last));
}

#ifdef __AVX2__
/// Needs a vector of groups.
template <class Digit>
void encode_wide(const std::uint8_t* bytes, std::size_t groups, Digit* digits) {
  constexpr std::size_t step = groups_a_vector<Wide>;
  const std::size_t last = groups - step;
  store_digits<Wide>(digits, spread_alone(bytes));
  for (std::size_t done = step; done + 2 <= last; done += step)
    store_digits<Wide>(digits + 4 * done, spread(Wide(), bytes + 3 * done));
  if (last % step == 1) store_digits<Wide>(digits + 4 * (last - 1), spread_alone(bytes + 3 * (last - 1)));
  store_digits<Wide>(digits + 4 * last, spread_alone(bytes + 3 * last));
}
#endif

template <class V, class Digit>
std::size_t decode_by(const Digit* digits, std::size_t groups, std::uint8_t* bytes) {
  const Alphabet<V> alphabet;
  std::size_t done = 0;
  const auto decode_vector = [&](std::size_t at, bool more_follow) {
    typename V::Vector reasons;
    const auto values = alphabet.values_of(V::load_digits(digits + 4 * at), reasons);
    if (V::any_bit(reasons)) return false;
    store_joined(bytes + 3 * at, join<V>(values), more_follow);
    return true;
  };
  constexpr std::size_t step = groups_a_vector<V>;
  for (; groups - done > step + 1; done += step)
    if (!decode_vector(done, true)) break;
  while (groups - done >= step && decode_vector(done, false)) done += step;
  if (done == groups || (groups - done < step && decode_vector(groups - step, false))) return groups;
  return done + decode_plain(digits + 4 * done, groups - done, bytes + 3 * done);
}

}  // namespace

template <class Digit>
void encode(const std::uint8_t* bytes, std::size_t groups, Digit* digits) {
#ifdef __AVX2__
  if (groups >= groups_a_vector<Wide>) return encode_wide(bytes, groups, digits);
#endif
  if (groups >= groups_a_vector<Narrow> + 2) return encode_narrow(bytes, groups, digits);
  encode_plain(bytes, groups, digits);
}

template <class Digit>
std::size_t decode(const Digit* digits, std::size_t groups, std::uint8_t* bytes) {
  if (groups >= groups_a_vector<Widest>) return decode_by<Widest>(digits, groups, bytes);
  if (groups >= groups_a_vector<Narrow>) return decode_by<Narrow>(digits, groups, bytes);
  return decode_plain(digits, groups, bytes);
}

template void encode(const std::uint8_t*, std::size_t, std::uint8_t*);
template void encode(const std::uint8_t*, std::size_t, char16_t*);
template std::size_t decode(const std::uint8_t*, std::size_t, std::uint8_t*);
template std::size_t decode(const char16_t*, std::size_t, std::uint8_t*);

}  // namespace tornby::base64::TORNBY_KERNEL
