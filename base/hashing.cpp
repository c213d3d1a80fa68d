#include "base/hashing.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <random>

#include "base/letter_case.h"
#include "base/letter_vectors.h"

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

Point draw_point() {
  constexpr std::uint64_t least = 1 << 20, most = std::uint64_t{1} << 56;
  const std::uint64_t value = least + random_number() % (most - least);
  return {value, power(value, prime - 2)};
}

constexpr std::size_t block_size = 256;  // characters

struct Keys {
  std::uint32_t of_pairs[block_size / 2];
  std::uint64_t of_sizes[block_size + 1];
  std::uint64_t of_result;
};

Keys draw_keys() {
  Keys keys;
  std::mt19937_64 generator(random_number());
  for (std::uint32_t& key : keys.of_pairs) key = static_cast<std::uint32_t>(generator());
  for (std::uint64_t& key : keys.of_sizes) key = generator();
  keys.of_result = generator() | 1;
  return keys;
}

std::atomic<const Keys*> keys_of_process;

[[gnu::noinline]] const Keys* make_keys() {
  static const Keys keys = draw_keys();
  keys_of_process.store(&keys, std::memory_order_release);
  return &keys;
}

std::uint64_t add_and_multiply(std::uint32_t first, std::uint32_t second, const std::uint32_t* keys) {
  first += keys[0];
  second += keys[1];
  return std::uint64_t{first} * second;
}

[[gnu::noinline]] std::uint64_t hash_unit_by_unit(StringView block, const Keys& keys) {
  std::uint64_t hash = 0;
  const auto pair = [&](std::size_t at) {
    return std::uint32_t{at < block.size() ? upper(block[at]) : u'\0'} |
           std::uint32_t{at + 1 < block.size() ? upper(block[at + 1]) : u'\0'} << 16;
  };
  for (std::size_t at = 0; at < block.size(); at += 4)
    hash += add_and_multiply(pair(at), pair(at + 2), keys.of_pairs + at / 2);
  return hash;
}

/// Pairs of pairs of units, each pair added to its key, multiplied and added up: "NH" in Black, Halevi, Krawczyk,
/// Krovetz and Rogaway, "UMAC: fast and secure message authentication", CRYPTO 1999. Each size adds its own number.
///
/// Which of two ways a text goes depends on its size and on whether it is ASCII, which letter case does not change.
[[gnu::always_inline]] inline std::uint64_t hash_block(StringView block, const Keys& keys) {
#ifdef __SSE2__
  if (block.size() >= letter_vectors::least) {
    __m128i all = _mm_setzero_si128();
    __m128i sums = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(keys.of_sizes + block.size()));
    const std::uint32_t* key = keys.of_pairs;
    const auto add = [&](__m128i units) {
      all = _mm_or_si128(all, units);
      units = _mm_sub_epi16(units, letter_vectors::lower_letters(units));
      units = _mm_add_epi32(units, _mm_loadu_si128(reinterpret_cast<const __m128i*>(key)));
      sums = _mm_add_epi64(sums, _mm_mul_epu32(units, _mm_srli_epi64(units, 32)));
      key += 4;
    };
    letter_vectors::for_each(block.size(), add, block.data());
    if (letter_vectors::is_ascii(all)) return letter_vectors::sum_of_halves(sums);
  }
#endif
  return keys.of_sizes[block.size()] + hash_unit_by_unit(block, keys);
}

[[gnu::noinline]] std::uint64_t hash_blocks(StringView text, const Keys& keys) {
  std::uint64_t hash = hash_block(text.substr(0, block_size), keys);
  for (std::size_t start = block_size; start < text.size(); start += block_size) {
    const std::uint64_t next = hash_block(text.substr(start, block_size), keys);
    hash = loose_product(reduced(hash >> 1), Point::of_process().value) + (next >> 3);
  }
  return hash;
}

}  // namespace

const Point& Point::of_process() {
  static const Point point = draw_point();
  return point;
}

std::uint32_t hash_ignoring_case(StringView text) {
  const Keys* keys = keys_of_process.load(std::memory_order_acquire);
  if (!keys) keys = make_keys();
  const std::uint64_t hash = text.size() <= block_size ? hash_block(text, *keys) : hash_blocks(text, *keys);
  return static_cast<std::uint32_t>(hash * keys->of_result >> 32);
}

}  // namespace tornby::hashing
