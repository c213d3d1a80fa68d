// A block is a polynomial over the field of two elements, and a vector that moves forwards over `n` bits is multiplied
// by x^n modulo the checksum's polynomial. The white paper named in kernels.h derives the steps; the constants are
// computed here. This file is compiled for 128, 256 and 512 bits: lanes of 128 bits are folded side by side.
#include <immintrin.h>

#include "checksums/crc/kernels.h"

namespace tornby::crc::TORNBY_KERNEL {
namespace {

using Lane = __m128i;
constexpr std::size_t lane_size = 16;
static_assert(lane_size == least_for_vectors);

#if defined(__AVX512F__)
using Vector = __m512i;
#elif defined(__VPCLMULQDQ__)
using Vector = __m256i;
#else
using Vector = __m128i;
#endif
constexpr std::size_t vector_size = sizeof(Vector);
constexpr std::size_t block_size = 4 * vector_size;

/// The CRC-32's lowest bit stands for the highest power: so does the lowest bit of each of its vectors.
struct Crc32 {
  using Register = std::uint32_t;
  static constexpr std::uint64_t polynomial = 0x104C11DB7;
  static constexpr bool reflected = true;
  static constexpr auto& short_block = update_crc32_sliced;
  static int in_memory(Register value) { return static_cast<int>(value); }
  static Register from(std::uint32_t remainder) { return remainder; }
};

/// The CRC-16 is the upper half of a remainder of 32 bits, for which its polynomial is multiplied by x^16. Its highest
/// bit stands for the highest power, so the bytes of each lane are turned round.
struct Crc16 {
  using Register = std::uint16_t;
  static constexpr std::uint64_t polynomial = 0x110210000;
  static constexpr bool reflected = false;
  static constexpr auto& short_block = update_crc16_sliced;
  static int in_memory(Register value) { return static_cast<Register>(value << 8 | value >> 8); }
  static Register from(std::uint32_t remainder) { return static_cast<Register>(remainder >> 16); }
};

/// x^n modulo the polynomial.
template <class Checksum>
constexpr std::uint64_t power(unsigned n) {
  std::uint64_t value = 1;
  for (; n > 0; --n) value = (value & 0x80000000) != 0 ? value << 1 ^ Checksum::polynomial : value << 1;
  return value;
}

/// x^96 divided by the polynomial, without the term x^64.
template <class Checksum>
constexpr std::uint64_t quotient() {
  std::uint64_t remainder = std::uint64_t{1} << 32;  // of x^96, the rest of which is zeros to come
  std::uint64_t result = 0;
  for (int bit = 0; bit <= 64; ++bit) {
    const std::uint64_t times = remainder >> 32 & 1;
    result = result << 1 | times;
    remainder = (remainder ^ times * Checksum::polynomial) << 1;
  }
  return result;
}

constexpr std::uint64_t turned_round(std::uint64_t bits) {
  std::uint64_t result = 0;
  for (int bit = 0; bit < 64; ++bit) result |= (bits >> bit & 1) << (63 - bit);
  return result;
}

/// What the two halves of a lane are multiplied by.
struct Factors {
  std::uint64_t low, high;
};

/// To move a lane forwards over so many bits. The first half of a lane lies 64 bits further back. The product of two
/// numbers that are turned round is one bit short, which the lower power makes good.
template <class Checksum>
constexpr Factors forwards(unsigned bits) {
  if (!Checksum::reflected) return {power<Checksum>(bits), power<Checksum>(bits + 64)};
  return {turned_round(power<Checksum>(bits + 63)), turned_round(power<Checksum>(bits - 1))};
}

/// To reduce a lane: its first half over 96 bits, then by division after Barrett.
template <class Checksum>
constexpr Factors first_half_forwards() {
  const std::uint64_t factor = power<Checksum>(96);
  if (!Checksum::reflected) return {0, factor << 32};
  return {turned_round(factor << 31), 0};
}
template <class Checksum>
constexpr Factors division() {
  if (!Checksum::reflected) return {quotient<Checksum>(), Checksum::polynomial << 32};
  return {turned_round(quotient<Checksum>() >> 1 | std::uint64_t{1} << 63), turned_round(Checksum::polynomial << 31)};
}

Lane load_lane(const std::uint8_t* data) {
  return _mm_loadu_si128(reinterpret_cast<const Lane*>(data));
}
Lane lane_of(Factors factors) {
  return _mm_set_epi64x(static_cast<long long>(factors.high), static_cast<long long>(factors.low));
}

/// Moves a vector onto the one that stands where it comes to.
Lane fold(Lane vector, Lane factors, Lane onto) {
  const Lane low = _mm_clmulepi64_si128(vector, factors, 0x00);
  const Lane high = _mm_clmulepi64_si128(vector, factors, 0x11);
  return _mm_xor_si128(_mm_xor_si128(low, high), onto);
}

#if defined(__AVX512F__)
Vector load_vector(const std::uint8_t* data) {
  return _mm512_loadu_si512(data);
}
Vector in_each_lane(Lane lane) {
  return _mm512_broadcast_i32x4(lane);
}
Vector shuffled(Vector bytes, Vector order) {
  return _mm512_shuffle_epi8(bytes, order);
}
Vector added_to_first(Lane lane, Vector vector) {
  return _mm512_xor_si512(vector, _mm512_zextsi128_si512(lane));
}
Vector fold(Vector vector, Vector factors, Vector onto) {
  const Vector low = _mm512_clmulepi64_epi128(vector, factors, 0x00);
  const Vector high = _mm512_clmulepi64_epi128(vector, factors, 0x11);
  return _mm512_ternarylogic_epi64(low, high, onto, 0x96);
}
/// All lanes moved onto the last.
template <class Checksum>
Lane joined(Vector vector) {
  const Vector factors = _mm512_inserti32x4(
      _mm512_inserti32x4(_mm512_zextsi128_si512(lane_of(forwards<Checksum>(384))), lane_of(forwards<Checksum>(256)), 1),
      lane_of(forwards<Checksum>(128)), 2);
  const Vector moved = fold(vector, factors, _mm512_setzero_si512());
  const __m256i halves = _mm256_xor_si256(_mm512_castsi512_si256(moved), _mm512_extracti64x4_epi64(moved, 1));
  return _mm_xor_si128(_mm_xor_si128(_mm256_castsi256_si128(halves), _mm256_extracti128_si256(halves, 1)),
                       _mm512_extracti32x4_epi32(vector, 3));
}
#elif defined(__VPCLMULQDQ__)
Vector load_vector(const std::uint8_t* data) {
  return _mm256_loadu_si256(reinterpret_cast<const Vector*>(data));
}
Vector in_each_lane(Lane lane) {
  return _mm256_broadcastsi128_si256(lane);
}
Vector shuffled(Vector bytes, Vector order) {
  return _mm256_shuffle_epi8(bytes, order);
}
Vector added_to_first(Lane lane, Vector vector) {
  return _mm256_xor_si256(vector, _mm256_zextsi128_si256(lane));
}
Vector fold(Vector vector, Vector factors, Vector onto) {
  const Vector low = _mm256_clmulepi64_epi128(vector, factors, 0x00);
  const Vector high = _mm256_clmulepi64_epi128(vector, factors, 0x11);
  return _mm256_xor_si256(_mm256_xor_si256(low, high), onto);
}
template <class Checksum>
Lane joined(Vector vector) {
  return fold(_mm256_castsi256_si128(vector), lane_of(forwards<Checksum>(128)), _mm256_extracti128_si256(vector, 1));
}
#else
Vector load_vector(const std::uint8_t* data) {
  return load_lane(data);
}
Vector in_each_lane(Lane lane) {
  return lane;
}
Vector added_to_first(Lane lane, Vector vector) {
  return _mm_xor_si128(vector, lane);
}
template <class Checksum>
Lane joined(Vector vector) {
  return vector;
}
#endif
Lane shuffled(Lane bytes, Lane order) {
  return _mm_shuffle_epi8(bytes, order);
}

Lane turned_order() {
  return _mm_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0);
}

template <class Checksum>
Lane take_lane(const std::uint8_t* data) {
  const Lane bytes = load_lane(data);
  return Checksum::reflected ? bytes : shuffled(bytes, turned_order());
}
template <class Checksum>
Vector take(const std::uint8_t* data) {
  const Vector bytes = load_vector(data);
  return Checksum::reflected ? bytes : shuffled(bytes, in_each_lane(turned_order()));
}
template <class Checksum>
Lane register_lane(typename Checksum::Register value) {
  const Lane bytes = _mm_cvtsi32_si128(Checksum::in_memory(value));
  return Checksum::reflected ? bytes : shuffled(bytes, turned_order());
}

/// The register that a lane is worth.
template <class Checksum>
typename Checksum::Register reduce(Lane lane) {
  const Lane factors = lane_of(first_half_forwards<Checksum>());
  const Lane divisor = lane_of(division<Checksum>());
  if (Checksum::reflected) {
    lane = _mm_xor_si128(_mm_srli_si128(lane, 8), _mm_clmulepi64_si128(lane, factors, 0x00));
    const Lane times = _mm_clmulepi64_si128(lane, divisor, 0x00);
    lane = _mm_xor_si128(lane, _mm_clmulepi64_si128(times, divisor, 0x10));
    return Checksum::from(static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(lane, 8))));
  }
  lane = _mm_xor_si128(_mm_slli_si128(lane, 8), _mm_clmulepi64_si128(lane, factors, 0x11));
  const Lane times = _mm_xor_si128(lane, _mm_clmulepi64_si128(lane, divisor, 0x01));
  lane = _mm_xor_si128(lane, _mm_clmulepi64_si128(times, divisor, 0x11));
  return Checksum::from(static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(lane, 4))));
}

/// From `shift_orders` + 16 + n on: a shuffle that moves all bytes n places down; - n: up. Zeros move in.
alignas(16) constexpr std::uint8_t shift_orders[48] = {
    0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80,
    0,    1,    2,    3,    4,    5,    6,    7,    8,    9,    10,   11,   12,   13,   14,   15,
    0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};

/// Takes in the last bytes of a block, fewer than a lane of them, which end at `end`: the lane's last bytes and those
/// new ones become one lane, and its first bytes are moved onto it.
template <class Checksum>
Lane take_last(Lane lane, const std::uint8_t* end, std::size_t size) {
  const std::uint8_t* const middle = shift_orders + lane_size;
  const Lane order_of_first =
      load_lane(Checksum::reflected ? middle - (lane_size - size) : middle + (lane_size - size));
  const Lane order_of_last = load_lane(Checksum::reflected ? middle + size : middle - size);
  const Lane first = shuffled(lane, order_of_first);
  const Lane last = _mm_blendv_epi8(shuffled(lane, order_of_last), take_lane<Checksum>(end - lane_size), order_of_last);
  return fold(first, lane_of(forwards<Checksum>(128)), last);
}

template <class Checksum>
typename Checksum::Register update(typename Checksum::Register value, const std::uint8_t* data, std::size_t size) {
  if (size < lane_size) return Checksum::short_block(value, data, size);

  const std::uint8_t* const end = data + size;
  const Lane start = register_lane<Checksum>(value);
  Lane lane;
  if (size >= vector_size) {
    Vector a = added_to_first(start, take<Checksum>(data));
    const Vector by_one = in_each_lane(lane_of(forwards<Checksum>(8 * vector_size)));
    if (size >= block_size) {
      Vector b = take<Checksum>(data + vector_size);
      Vector c = take<Checksum>(data + 2 * vector_size);
      Vector d = take<Checksum>(data + 3 * vector_size);
      const Vector by_four = in_each_lane(lane_of(forwards<Checksum>(8 * block_size)));
      for (data += block_size, size -= block_size; size >= block_size; data += block_size, size -= block_size) {
        a = fold(a, by_four, take<Checksum>(data));
        b = fold(b, by_four, take<Checksum>(data + vector_size));
        c = fold(c, by_four, take<Checksum>(data + 2 * vector_size));
        d = fold(d, by_four, take<Checksum>(data + 3 * vector_size));
      }
      const Vector by_two = in_each_lane(lane_of(forwards<Checksum>(2 * 8 * vector_size)));
      a = fold(fold(a, by_one, b), by_two, fold(c, by_one, d));
    } else {
      data += vector_size;
      size -= vector_size;
    }
    for (; size >= vector_size; data += vector_size, size -= vector_size) a = fold(a, by_one, take<Checksum>(data));
    lane = joined<Checksum>(a);
  } else {
    lane = _mm_xor_si128(start, take_lane<Checksum>(data));
    data += lane_size;
    size -= lane_size;
  }
  const Lane by_a_lane = lane_of(forwards<Checksum>(128));
  for (; size >= lane_size; data += lane_size, size -= lane_size)
    lane = fold(lane, by_a_lane, take_lane<Checksum>(data));
  if (size != 0) lane = take_last<Checksum>(lane, end, size);
  return reduce<Checksum>(lane);
}

}  // namespace

std::uint16_t update_crc16(std::uint16_t value, const std::uint8_t* data, std::size_t size) {
  return update<Crc16>(value, data, size);
}

std::uint32_t update_crc32(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  return update<Crc32>(value, data, size);
}

}  // namespace tornby::crc::TORNBY_KERNEL
