// A block is a polynomial over the field of two elements, least significant bit first. Four vectors of sixteen bytes
// are folded forwards at once, then into one, and what is left is reduced after Barrett. The white paper named in
// kernels.h derives the steps and gives the constants, which are computed here.
#include <emmintrin.h>
#include <wmmintrin.h>

#include "checksums/crc/kernels.h"

namespace tornby::crc {
namespace {

constexpr std::uint32_t polynomial = 0xEDB88320;  // reflected, without the term x^32
constexpr std::size_t vector_size = 16;
constexpr std::size_t block_size = 4 * vector_size;

/// x^n modulo the polynomial, reflected, and shifted because the product of two reflected factors is one bit short.
constexpr std::uint64_t power(unsigned n) {
  std::uint32_t value = 0x80000000;
  for (; n > 0; --n) value = (value & 1) != 0 ? value >> 1 ^ polynomial : value >> 1;
  return std::uint64_t{value} << 1;
}

/// x^64 divided by the polynomial, reflected.
constexpr std::uint64_t quotient() {
  std::uint64_t remainder = 0;
  std::uint64_t result = 0;
  for (int term = 64; term >= 0; --term) {
    remainder = remainder << 1 | (term == 64 ? 1 : 0);
    const std::uint64_t times = remainder >> 32;
    remainder ^= times * 0x104C11DB7;
    result = result >> 1 | times << 32;
  }
  return result;
}

constexpr std::uint64_t whole_polynomial = std::uint64_t{polynomial} << 1 | 1;

static_assert(power(4 * 128 + 32) == 0x154442BD4 && power(4 * 128 - 32) == 0x1C6E41596);
static_assert(power(128 + 32) == 0x1751997D0 && power(128 - 32) == 0x0CCAA009E);
static_assert(power(64) == 0x163CD6124 && quotient() == 0x1F7011641 && whole_polynomial == 0x1DB710641);

__m128i pair(std::uint64_t low, std::uint64_t high) {
  return _mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low));
}

__m128i load(const std::uint8_t* data) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

/// Moves a vector forwards, as far as `powers` says, onto the one that stands there.
__m128i fold(__m128i vector, __m128i powers, __m128i onto) {
  const __m128i low = _mm_clmulepi64_si128(vector, powers, 0x00);
  const __m128i high = _mm_clmulepi64_si128(vector, powers, 0x11);
  return _mm_xor_si128(_mm_xor_si128(low, high), onto);
}

/// The register that a vector is worth.
std::uint32_t reduce(__m128i vector) {
  const __m128i low_word = _mm_set_epi32(0, 0, 0, -1);
  const __m128i ends = pair(power(64), power(128 - 32));
  const __m128i divisor = pair(whole_polynomial, quotient());
  // From 128 bits to 96, to 64, to 32.
  vector = _mm_xor_si128(_mm_srli_si128(vector, 8), _mm_clmulepi64_si128(vector, ends, 0x10));
  const __m128i lowest = _mm_and_si128(vector, low_word);
  vector = _mm_xor_si128(_mm_srli_si128(vector, 4), _mm_clmulepi64_si128(lowest, ends, 0x00));
  const __m128i times = _mm_clmulepi64_si128(_mm_and_si128(vector, low_word), divisor, 0x10);
  const __m128i multiple = _mm_clmulepi64_si128(_mm_and_si128(times, low_word), divisor, 0x00);
  return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(_mm_xor_si128(vector, multiple), 4)));
}

}  // namespace

std::uint32_t update_crc32_carryless(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  if (size < block_size) return update_crc32_sliced(value, data, size);

  const __m128i by_a_block = pair(power(4 * 128 + 32), power(4 * 128 - 32));
  const __m128i by_a_vector = pair(power(128 + 32), power(128 - 32));
  __m128i a = _mm_xor_si128(load(data), _mm_cvtsi32_si128(static_cast<int>(value)));
  __m128i b = load(data + vector_size);
  __m128i c = load(data + 2 * vector_size);
  __m128i d = load(data + 3 * vector_size);
  data += block_size;
  size -= block_size;
  for (; size >= block_size; data += block_size, size -= block_size) {
    a = fold(a, by_a_block, load(data));
    b = fold(b, by_a_block, load(data + vector_size));
    c = fold(c, by_a_block, load(data + 2 * vector_size));
    d = fold(d, by_a_block, load(data + 3 * vector_size));
  }
  a = fold(fold(fold(a, by_a_vector, b), by_a_vector, c), by_a_vector, d);
  for (; size >= vector_size; data += vector_size, size -= vector_size) a = fold(a, by_a_vector, load(data));
  return update_crc32_sliced(reduce(a), data, size);
}

}  // namespace tornby::crc
