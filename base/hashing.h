// Hashes of texts that nobody can make collide on purpose.
//
// A text is a polynomial, its characters the coefficients, and its hash the value modulo the prime 2^61 - 1 at a point
// that the process draws once: Carter and Wegman, "Universal classes of hash functions", Journal of Computer and System
// Sciences 18(2), 1979. Two different texts of n characters have the same hash at n of the 2^61 points at most.
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

/// The product of two residues, by 32-bit halves: 2^61 is 1, and so 2^64 is 8.
constexpr std::uint64_t product(std::uint64_t a, std::uint64_t b) {
  const std::uint64_t a_high = a >> 32, a_low = a & 0xFFFFFFFF, b_high = b >> 32, b_low = b & 0xFFFFFFFF;
  const std::uint64_t low = a_low * b_low, middle = a_high * b_low + a_low * b_high, high = a_high * b_high;
  return reduced((high << 3) + (middle >> 29) + ((middle & 0x1FFFFFFF) << 32) + (low >> 61) + (low & prime));
}

constexpr std::uint64_t power(std::uint64_t base, std::uint64_t exponent) {
  std::uint64_t result = 1;
  for (; exponent > 0; exponent >>= 1, base = product(base, base))
    if (exponent & 1) result = product(result, base);
  return result;
}

struct Point {
  std::uint64_t value;
  std::uint64_t inverse;

  static const Point& of_process();
};

/// The hash of `text` in upper case.
std::uint64_t hash_ignoring_case(StringView text);

}  // namespace tornby::hashing
