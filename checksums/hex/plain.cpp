// One byte a step, by table.
#include <array>

#include "checksums/hex/kernels.h"

namespace tornby::hex {
namespace {

constexpr std::uint8_t no_digit = 0xFF;
constexpr std::array<std::uint8_t, 16> digit_of = {'0', '1', '2', '3', '4', '5', '6', '7',
                                                   '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
constexpr std::array<std::uint8_t, 256> value_of = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(no_digit);
  for (std::size_t value = 0; value < digit_of.size(); ++value) {
    values[digit_of[value]] = static_cast<std::uint8_t>(value);
    if (value >= 10) values[digit_of[value] - 'A' + 'a'] = static_cast<std::uint8_t>(value);
  }
  return values;
}();

template <class Digit>
std::uint8_t value(Digit digit) {
  return digit < value_of.size() ? value_of[digit] : no_digit;
}

}  // namespace

template <class Digit>
void encode_plain(const std::uint8_t* bytes, std::size_t groups, Digit* digits) {
  for (std::size_t i = 0; i < groups; ++i) {
    digits[2 * i] = digit_of[bytes[i] >> 4];
    digits[2 * i + 1] = digit_of[bytes[i] & 15];
  }
}

template <class Digit>
std::size_t decode_plain(const Digit* digits, std::size_t groups, std::uint8_t* bytes) {
  for (std::size_t i = 0; i < groups; ++i) {
    const unsigned high = value(digits[2 * i]);
    const unsigned low = value(digits[2 * i + 1]);
    if ((high | low) > 15) return i;
    bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
  }
  return groups;
}

template void encode_plain(const std::uint8_t*, std::size_t, std::uint8_t*);
template void encode_plain(const std::uint8_t*, std::size_t, char16_t*);
template std::size_t decode_plain(const std::uint8_t*, std::size_t, std::uint8_t*);
template std::size_t decode_plain(const char16_t*, std::size_t, std::uint8_t*);

}  // namespace tornby::hex
