// One suite for every XOR kernel: each byte must meet its own key byte, whatever the lengths, the phase and the place.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "checksums/keyed_xor/kernels.h"
#include "support/guarded_buffer.h"
#include "support/kernels.h"

namespace tornby::keyed_xor {
namespace {

TEST(KeyedXorKernel, AgreesAtEveryLengthKeyAndPhaseAndStaysInside) {
  std::mt19937 random{20260712};
  constexpr std::size_t longest = 700, longest_key = 600;
  testing::GuardedBuffer data_room(longest + 64);
  testing::GuardedBuffer other_room(longest);
  testing::GuardedBuffer key_room(longest_key);
  for (const std::size_t key_size : {1, 2, 3, 4, 5, 7, 8, 11, 15, 16, 17, 31, 32, 33, 70, 512, 513, 600}) {
    const auto key = testing::random_bytes(random, key_size);
    const auto key_place = key_room.at_end(key_size);
    std::copy(key.begin(), key.end(), key_place.begin());
    for (std::size_t size = 0; size <= longest; size += 1 + size / 300 * 10) {
      const auto data = testing::random_bytes(random, size);
      const std::size_t phase = random() % key_size;
      auto expected = data;
      for (std::size_t i = 0; i < size; ++i) expected[i] ^= key[(phase + i) % key_size];
      const std::size_t shift = random() % 64;
      for (const auto place : {data_room.at_end(size), data_room.at_start(size + shift).subspan(shift)})
        testing::with_each(kernels(), [&](const Kernel& kernel) {
          std::copy(data.begin(), data.end(), place.begin());
          const auto other_place = other_room.at_end(size);
          for (const auto to : {other_place, place}) {  // elsewhere, then where the bytes are
            kernel.apply(place.data(), to.data(), size, key_place.data(), key_size, phase);
            ASSERT_TRUE(std::equal(expected.begin(), expected.end(), to.begin()))
                << kernel.name << ", " << size << " bytes, key of " << key_size << " from " << phase;
          }
        });
    }
  }
}

}  // namespace
}  // namespace tornby::keyed_xor
