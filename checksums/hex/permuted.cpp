#include "checksums/permuted.h"

#include "checksums/hex/kernels.h"

namespace tornby::hex::TORNBY_KERNEL {
namespace {

struct Form {
  static constexpr std::size_t bytes_a_group = 1, digits_a_group = 2;

  // Four bytes in each eight places; a window has one half of a byte and some bits that must not count.
  static constexpr ByPlace spread{[](unsigned place) { return place / 8 * 4 + place % 4; }};
  static constexpr ByPlace windows{[](unsigned place) { return place % 8 / 2 * 8 + (place % 2 == 0 ? 4 : 0); }};
  static constexpr ByPlace alphabet{[](unsigned place) { return "0123456789ABCDEF"[place % 16]; }};

  static constexpr unsigned value_of(unsigned character) {
    if (character >= '0' && character <= '9') return character - '0';
    const unsigned upper_case = character & 0xDF;
    return upper_case >= 'A' && upper_case <= 'F' ? upper_case - 'A' + 10 : 128;
  }
  static Vector join(Vector values) { return _mm512_maddubs_epi16(values, _mm512_set1_epi16(0x0110)); }
  static constexpr ByPlace joined{[](unsigned place) { return place < 32 ? packed(2 * place) : 0; }};
  static constexpr auto decode_plain = hex::decode_plain<char16_t>;
};

}  // namespace

void encode(const std::uint8_t* bytes, std::size_t groups, char16_t* digits) {
  Permuted<Form>::encode(bytes, groups, digits);
}
std::size_t decode(const char16_t* digits, std::size_t groups, std::uint8_t* bytes) {
  return Permuted<Form>::decode(digits, groups, bytes);
}

}  // namespace tornby::hex::TORNBY_KERNEL
