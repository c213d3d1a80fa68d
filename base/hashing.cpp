#include "base/hashing.h"

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

Point draw() {
  constexpr std::uint64_t too_small = 1 << 16;  // where short texts are hashed without any reduction
  const std::uint64_t value = too_small + random_number() % (prime - too_small);
  return {value, power(value, prime - 2)};
}

}  // namespace

const Point& Point::of_process() {
  static const Point point = draw();
  return point;
}

std::uint64_t hash_ignoring_case(StringView text) {
  const std::uint64_t point = Point::of_process().value;
  std::uint64_t hash = text.size();
  std::size_t i = 0;
  for (; i + 2 <= text.size(); i += 2)
    hash = product(hash, point) + (upper(text[i]) | std::uint64_t{upper(text[i + 1])} << 16);
  if (i < text.size()) hash = product(hash, point) + upper(text[i]);
  return hash;
}

}  // namespace tornby::hashing
