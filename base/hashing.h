// Hashes of texts that nobody can make collide on purpose.
//
// A text is a polynomial, its characters the coefficients, and its hash the value modulo the prime 2^61 - 1 at a point
// that the process draws once: Carter and Wegman, "Universal classes of hash functions", Journal of Computer and System
// Sciences 18(2), 1979. Two different texts of n characters have the same hash at n of the 2^56 points at most.
#pragma once

#include <cstddef>
#include <cstdint>

#include <tornby/base/text.h>

namespace tornby::hashing {

inline constexpr std::uint64_t prime = (std::uint64_t{1} << 61) - 1;

/// `x`, below 2^64 - 8, modulo the prime.
constexpr std::uint64_t reduced(std::uint64_t x) {
  x = (x & prime) + (x >> 61);
  return x < prime ? x : x - prime;
}

/// A number below 2^63 that is the product modulo the prime: of two residues, or of a number below 2^63 and one below
/// 2^56. By halves, 2^61 being 1 and 2^64 being 8.
constexpr std::uint64_t loose_product(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
  __extension__ using Wide = unsigned __int128;
  const Wide whole = Wide{a} * b;
  return (static_cast<std::uint64_t>(whole) & prime) + static_cast<std::uint64_t>(whole >> 61);
#else
  const std::uint64_t a_high = a >> 32, a_low = a & 0xFFFFFFFF, b_high = b >> 32, b_low = b & 0xFFFFFFFF;
  const std::uint64_t low = a_low * b_low, middle = a_high * b_low + a_low * b_high;
  return (a_high * b_high << 3) + (middle >> 29) + ((middle & 0x1FFFFFFF) << 32) + (low >> 61) + (low & prime);
#endif
}

constexpr std::uint64_t product(std::uint64_t a, std::uint64_t b) {
  return reduced(loose_product(a, b));
}

constexpr std::uint64_t power(std::uint64_t base, std::uint64_t exponent) {
  std::uint64_t result = 1;
  for (; exponent > 0; exponent >>= 1, base = product(base, base))
    if (exponent & 1) result = product(result, base);
  return result;
}

struct Point {
  std::uint64_t value;  // below 2^56
  std::uint64_t inverse;

  static const Point& of_process();
};

/// The hash of `text` in upper case, by a quicker way for short texts.
std::uint32_t hash_ignoring_case(StringView text);

}  // namespace tornby::hashing
