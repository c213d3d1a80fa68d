// One suite for every kernel that turns bytes into digits and back: it must agree with the digits worked out bit by
// bit, at every length and alignment, and stop at the first group that holds anything else.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string_view>
#include <vector>

#include "checksums/base64/kernels.h"
#include "checksums/hex/kernels.h"
#include "support/guarded_buffer.h"
#include "support/kernels.h"

namespace tornby {
namespace {

struct Hex {
  static constexpr std::string_view alphabet = "0123456789ABCDEF";
  static constexpr std::string_view also_read = "abcdef";
  static constexpr std::size_t bytes_a_group = 1, digits_a_group = 2, bits_a_digit = 4;
  static auto kernels() { return hex::kernels(); }
};

struct Base64 {
  static constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  static constexpr std::string_view also_read = "";
  static constexpr std::size_t bytes_a_group = 3, digits_a_group = 4, bits_a_digit = 6;
  static auto kernels() { return base64::kernels(); }
};

template <class Form>
class CodecKernel : public ::testing::Test {
 protected:
  static std::vector<std::uint8_t> digits_by_bits(const std::vector<std::uint8_t>& bytes) {
    std::vector<std::uint8_t> digits;
    for (std::size_t bit = 0; bit < 8 * bytes.size(); bit += Form::bits_a_digit) {
      unsigned value = 0;
      for (std::size_t i = bit; i < bit + Form::bits_a_digit; ++i)
        value = value << 1 | (bytes[i / 8] >> (7 - i % 8) & 1);
      digits.push_back(static_cast<std::uint8_t>(Form::alphabet[value]));
    }
    return digits;
  }

  std::mt19937 random_{20260711};
};

using Forms = ::testing::Types<Hex, Base64>;
TYPED_TEST_SUITE(CodecKernel, Forms);

TYPED_TEST(CodecKernel, AgreesAtEveryLengthAndAlignmentAndStaysInside) {
  constexpr std::size_t longest = 100, shifts = 33;
  testing::GuardedBuffer bytes_room(longest * TypeParam::bytes_a_group + shifts);
  testing::GuardedBuffer digits_room(longest * TypeParam::digits_a_group + shifts);
  testing::GuardedBuffer units_room(2 * longest * TypeParam::digits_a_group);
  for (std::size_t groups = 0; groups <= longest; ++groups) {
    const auto bytes = testing::random_bytes(this->random_, groups * TypeParam::bytes_a_group);
    const auto digits = this->digits_by_bits(bytes);
    const auto check = [&](std::span<std::uint8_t> bytes_place, std::span<std::uint8_t> digits_place) {
      testing::with_each(TypeParam::kernels(), [&](const Codec& kernel) {
        std::copy(bytes.begin(), bytes.end(), bytes_place.begin());
        std::fill(digits_place.begin(), digits_place.end(), std::uint8_t{0});
        kernel.encode(bytes_place.data(), groups, digits_place.data());
        ASSERT_TRUE(std::equal(digits.begin(), digits.end(), digits_place.begin())) << groups;
        std::fill(bytes_place.begin(), bytes_place.end(), std::uint8_t{0});
        ASSERT_EQ(kernel.decode(digits_place.data(), groups, bytes_place.data()), groups);
        ASSERT_TRUE(std::equal(bytes.begin(), bytes.end(), bytes_place.begin())) << groups;

        const auto units = reinterpret_cast<char16_t*>(units_room.at_end(2 * digits.size()).data());
        kernel.encode_units(bytes_place.data(), groups, units);
        ASSERT_TRUE(std::equal(digits.begin(), digits.end(), units)) << groups;
        std::fill(bytes_place.begin(), bytes_place.end(), std::uint8_t{0});
        ASSERT_EQ(kernel.decode_units(units, groups, bytes_place.data()), groups);
        ASSERT_TRUE(std::equal(bytes.begin(), bytes.end(), bytes_place.begin())) << groups;
      });
    };
    check(bytes_room.at_end(bytes.size()), digits_room.at_end(digits.size()));
    for (std::size_t shift = 0; shift < shifts; ++shift)
      check(bytes_room.at_start(bytes.size() + shift).subspan(shift),
            digits_room.at_start(digits.size() + (shifts - shift)).subspan(shifts - shift));
  }
}

TYPED_TEST(CodecKernel, StopsAtTheFirstGroupWithAnythingButDigits) {
  constexpr std::size_t groups = 50;
  const auto digits = this->digits_by_bits(testing::random_bytes(this->random_, groups * TypeParam::bytes_a_group));
  testing::GuardedBuffer bytes_room(groups * TypeParam::bytes_a_group);
  testing::GuardedBuffer digits_room(digits.size());
  const auto place = digits_room.at_end(digits.size());
  const auto out = bytes_room.at_end(groups * TypeParam::bytes_a_group);
  for (unsigned value = 0; value < 256; ++value) {
    const char character = static_cast<char>(value);
    const bool legal = TypeParam::alphabet.find(character) != std::string_view::npos ||
                       TypeParam::also_read.find(character) != std::string_view::npos;
    for (std::size_t at = value % 7; at < digits.size(); at += 7) {
      std::copy(digits.begin(), digits.end(), place.begin());
      place[at] = static_cast<std::uint8_t>(value);
      testing::with_each(TypeParam::kernels(), [&](const Codec& kernel) {
        const std::size_t first = at / TypeParam::digits_a_group;
        ASSERT_EQ(kernel.decode(place.data(), groups, out.data()), legal ? groups : first) << value << " at " << at;
        std::vector<char16_t> units(place.begin(), place.end());
        ASSERT_EQ(kernel.decode_units(units.data(), groups, out.data()), legal ? groups : first)
            << value << " at " << at;
        units[at] = static_cast<char16_t>(units[at] + 0x100 * (value + 1));  // up to 0xFFFF and round
        ASSERT_EQ(kernel.decode_units(units.data(), groups, out.data()), value < 0xFF ? first : legal ? groups : first);
      });
    }
  }
}

}  // namespace
}  // namespace tornby
