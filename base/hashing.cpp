#include "base/hashing.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <random>

#include "base/letter_case.h"

namespace tornby::hashing {
namespace {

std::uint64_t random_number() {
  static const char here{};
  auto number = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
                reinterpret_cast<std::uintptr_t>(&here);
  try {
    std::random_device device;
    for (int half = 0; half < 2; ++half) number = number << 32 ^ number >> 32 ^ device();
  } catch (const std::exception&) {
    // The time and the place in memory are what is left.
  }
  return number;
}

/// Two characters in upper case.
std::uint32_t upper_pair(const char16_t* at) {
  const std::uint32_t pair = at[0] | std::uint32_t{at[1]} << 16;
  if (pair & 0xFF80FF80) return upper(at[0]) | std::uint32_t{upper(at[1])} << 16;
  // Adding what a letter lacks to 0x80 raises the bit there for an "a" and all above it, and for all above "z".
  const std::uint32_t letters = (pair + 0x001F001F) & ~(pair + 0x00050005) & 0x00800080;
  return pair - (letters >> 2);
}

Point draw_point() {
  constexpr std::uint64_t least = 1 << 20, most = std::uint64_t{1} << 56;
  const std::uint64_t value = least + random_number() % (most - least);
  return {value, power(value, prime - 2)};
}

constexpr std::size_t block_size = 256;  // characters

struct Keys {
  std::uint32_t of_pairs[block_size / 2];
  std::uint64_t of_size;
  std::uint64_t of_result;
};

Keys draw_keys() {
  Keys keys;
  std::mt19937_64 generator(random_number());
  for (std::uint32_t& key : keys.of_pairs) key = static_cast<std::uint32_t>(generator());
  keys.of_size = generator();
  keys.of_result = generator() | 1;
  return keys;
}

/// Pairs of pairs of characters, each pair added to its key, multiplied and added up: "NH" in Black, Halevi, Krawczyk,
/// Krovetz and Rogaway, "UMAC: fast and secure message authentication", CRYPTO 1999.
std::uint64_t hash_block(const char16_t* at, std::size_t size, const Keys& keys) {
  std::uint64_t hash = size * keys.of_size;
  const std::uint32_t* key = keys.of_pairs;
  const auto add = [&](std::uint32_t first, std::uint32_t second) {
    first += key[0];
    second += key[1];
    hash += std::uint64_t{first} * second;
    key += 2;
  };
  for (; size >= 4; size -= 4, at += 4) add(upper_pair(at), upper_pair(at + 2));
  if (size >= 2)
    add(upper_pair(at), size == 3 ? upper(at[2]) : 0);
  else if (size == 1)
    add(upper(at[0]), 0);
  return hash;
}

}  // namespace

const Point& Point::of_process() {
  static const Point point = draw_point();
  return point;
}

std::uint32_t hash_ignoring_case(StringView text) {
  static const Keys keys = draw_keys();
  std::uint64_t hash = hash_block(text.data(), std::min(text.size(), block_size), keys);
  for (std::size_t start = block_size; start < text.size(); start += block_size) {
    const std::uint64_t next = hash_block(text.data() + start, std::min(text.size() - start, block_size), keys);
    hash = loose_product(reduced(hash >> 1), Point::of_process().value) + (next >> 3);
  }
  return static_cast<std::uint32_t>(hash * keys.of_result >> 32);
}

}  // namespace tornby::hashing
