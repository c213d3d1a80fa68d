#include "checksums/permuted.h"

#include "checksums/base64/kernels.h"

namespace tornby::base64::TORNBY_KERNEL {
namespace {

constexpr char digit_of[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

struct Form {
  static constexpr std::size_t bytes_a_group = 3, digits_a_group = 4;

  // In each 32 bits the second, first, third and second byte of a group, so that no digit's bits lie apart.
  static constexpr unsigned byte_of_group[] = {1, 0, 2, 1}, first_bit[] = {10, 4, 22, 16};
  static constexpr ByPlace spread{[](unsigned place) { return place / 4 * 3 + byte_of_group[place % 4]; }};
  static constexpr ByPlace windows{[](unsigned place) { return place % 8 / 4 * 32 + first_bit[place % 4]; }};
  static constexpr ByPlace alphabet{[](unsigned place) { return digit_of[place]; }};

  static constexpr unsigned value_of(unsigned character) {
    for (unsigned value = 0; value < 64; ++value)
      if (static_cast<unsigned char>(digit_of[value]) == character) return value;
    return 128;
  }
  static Vector join(Vector values) {
    const Vector pairs = _mm512_maddubs_epi16(values, _mm512_set1_epi32(0x01400140));
    return _mm512_madd_epi16(pairs, _mm512_set1_epi32(0x00011000));
  }
  static constexpr ByPlace joined{
      [](unsigned place) { return place < 48 ? packed(place / 3 * 4) + 2 - place % 3 : 0; }};
  static constexpr auto decode_plain = base64::decode_plain<char16_t>;
};

}  // namespace

void encode(const std::uint8_t* bytes, std::size_t groups, char16_t* digits) {
  Permuted<Form>::encode(bytes, groups, digits);
}
std::size_t decode(const char16_t* digits, std::size_t groups, std::uint8_t* bytes) {
  return Permuted<Form>::decode(digits, groups, bytes);
}

}  // namespace tornby::base64::TORNBY_KERNEL
