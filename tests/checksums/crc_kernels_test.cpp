// One suite for every kernel: it must agree with a bit-by-bit division, whatever the length, the alignment and the
// split.
#include "checksums/crc/kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string_view>
#include <vector>

#include "support/guarded_buffer.h"
#include "support/kernels.h"

namespace tornby::crc {
namespace {

struct Crc16 {
  using Register = std::uint16_t;
  static constexpr Register start = 0;
  static constexpr auto of = &Kernel::update_crc16;
  static constexpr auto& update = update_crc16;
  static Register by_bits(Register value, std::span<const std::uint8_t> bytes) {
    unsigned remainder = value;
    for (const unsigned byte : bytes)
      for (int bit = 7; bit >= 0; --bit) {
        const unsigned carry = (remainder >> 15 ^ byte >> bit) & 1;
        remainder = (remainder << 1 & 0xFFFF) ^ carry * 0x1021;
      }
    return static_cast<Register>(remainder);
  }
};

struct Crc32 {
  using Register = std::uint32_t;
  static constexpr Register start = 0xFFFFFFFF;
  static constexpr auto of = &Kernel::update_crc32;
  static constexpr auto& update = update_crc32;
  static Register by_bits(Register value, std::span<const std::uint8_t> bytes) {
    for (const std::uint32_t byte : bytes)
      for (int bit = 0; bit < 8; ++bit) {
        const std::uint32_t carry = (value ^ byte >> bit) & 1;
        value = value >> 1 ^ carry * 0xEDB88320u;
      }
    return value;
  }
};

template <class Checksum>
class CrcKernel : public ::testing::Test {
 protected:
  using Register = typename Checksum::Register;

  std::mt19937 random_{20260507};
};

using Checksums = ::testing::Types<Crc16, Crc32>;
TYPED_TEST_SUITE(CrcKernel, Checksums);

TYPED_TEST(CrcKernel, AgreesAtEveryLengthAndAlignmentAndStaysInside) {
  constexpr std::size_t longest = 600;
  testing::GuardedBuffer buffer(longest + 64);
  for (std::size_t length = 0; length <= longest; ++length) {
    const auto bytes = testing::random_bytes(this->random_, length);
    const auto value = static_cast<typename TypeParam::Register>(this->random_());
    const auto expected = TypeParam::by_bits(value, bytes);
    const auto check = [&](std::span<std::uint8_t> place) {
      std::copy(bytes.begin(), bytes.end(), place.begin());
      testing::with_each(kernels(), [&](const Kernel& kernel) {
        ASSERT_EQ((kernel.*TypeParam::of)(value, place.data(), length), expected) << length;
      });
    };
    check(buffer.at_end(length));
    for (std::size_t shift = 0; shift < 64; shift += 1 + length / 100)
      check(buffer.at_start(length + shift).subspan(shift));
  }
}

TYPED_TEST(CrcKernel, GoesOnWhereItStoppedAtAnySplit) {
  const auto bytes = testing::random_bytes(this->random_, 100'000);
  const auto expected = TypeParam::by_bits(TypeParam::start, bytes);
  for (int round = 0; round < 50; ++round) {
    std::vector<std::size_t> cuts = {0, bytes.size()};
    for (int cut = 0; cut < 20; ++cut) cuts.push_back(this->random_() % (bytes.size() + 1));
    std::sort(cuts.begin(), cuts.end());
    testing::with_each(kernels(), [&](const Kernel& kernel) {
      auto value = TypeParam::start;
      for (std::size_t i = 1; i < cuts.size(); ++i)
        value = (kernel.*TypeParam::of)(value, bytes.data() + cuts[i - 1], cuts[i] - cuts[i - 1]);
      ASSERT_EQ(value, expected);
    });
  }
  EXPECT_EQ(TypeParam::update(TypeParam::start, bytes.data(), bytes.size()), expected);
}

}  // namespace
}  // namespace tornby::crc
