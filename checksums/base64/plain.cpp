// One group a step, by table.
#include <array>
#include <string_view>

#include "checksums/base64/kernels.h"

namespace tornby::base64 {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t no_digit = 0xFF;
constexpr std::array<std::uint8_t, 256> value_of = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(no_digit);
  for (std::size_t value = 0; value < alphabet.size(); ++value)
    values[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
  return values;
}();

std::uint8_t digit_of(std::uint32_t value) {
  return static_cast<std::uint8_t>(alphabet[value & 63]);
}

template <class Digit>
std::uint8_t value(Digit digit) {
  return digit < value_of.size() ? value_of[digit] : no_digit;
}

}  // namespace

template <class Digit>
void encode_plain(const std::uint8_t* bytes, std::size_t groups, Digit* digits) {
  for (; groups != 0; --groups, bytes += 3, digits += 4) {
    const std::uint32_t bits = static_cast<std::uint32_t>(bytes[0]) << 16 | bytes[1] << 8 | bytes[2];
    digits[0] = digit_of(bits >> 18);
    digits[1] = digit_of(bits >> 12);
    digits[2] = digit_of(bits >> 6);
    digits[3] = digit_of(bits);
  }
}

template <class Digit>
std::size_t decode_plain(const Digit* digits, std::size_t groups, std::uint8_t* bytes) {
  for (std::size_t group = 0; group < groups; ++group, digits += 4, bytes += 3) {
    const std::uint32_t a = value(digits[0]);
    const std::uint32_t b = value(digits[1]);
    const std::uint32_t c = value(digits[2]);
    const std::uint32_t d = value(digits[3]);
    if ((a | b | c | d) > 63) return group;
    const std::uint32_t bits = a << 18 | b << 12 | c << 6 | d;
    bytes[0] = static_cast<std::uint8_t>(bits >> 16);
    bytes[1] = static_cast<std::uint8_t>(bits >> 8);
    bytes[2] = static_cast<std::uint8_t>(bits);
  }
  return groups;
}

template void encode_plain(const std::uint8_t*, std::size_t, std::uint8_t*);
template void encode_plain(const std::uint8_t*, std::size_t, char16_t*);
template std::size_t decode_plain(const std::uint8_t*, std::size_t, std::uint8_t*);
template std::size_t decode_plain(const char16_t*, std::size_t, std::uint8_t*);

}  // namespace tornby::base64
