#include "base/single_byte_code_page.h"

#include <algorithm>
#include <utility>

namespace tornby {
namespace {

std::vector<std::uint8_t> inverse(const SingleByteCodePage::Characters& characters) {
  std::vector<std::uint8_t> codes(0x10000, std::uint8_t{'?'});
  for (unsigned code = 256; code-- > 0;) codes[characters[code]] = static_cast<std::uint8_t>(code);
  return codes;
}

}  // namespace

SingleByteCodePage::SingleByteCodePage(unsigned identifier, const Characters& characters,
                                       std::vector<std::uint8_t> codes)
    : identifier_(identifier), characters_(characters), codes_(std::move(codes)) {
  for (unsigned code = 0; code < 0x80; ++code) ascii_is_itself_ = ascii_is_itself_ && characters_[code] == code;
}

SingleByteCodePage::SingleByteCodePage(unsigned identifier, const Characters& characters)
    : SingleByteCodePage(identifier, characters, inverse(characters)) {}

std::size_t SingleByteCodePage::encode(StringView text, std::uint8_t* out) const {
  const std::uint8_t* codes = codes_.data();
  std::transform(text.begin(), text.end(), out, [codes](char16_t unit) { return codes[unit]; });
  return text.size();
}

std::size_t SingleByteCodePage::decode(ByteView bytes, char16_t* out) const {
  const std::uint8_t* in = bytes.data();
  std::size_t left = bytes.size();
  const auto by_table = [this](std::uint8_t code) { return characters_[code]; };
  constexpr std::size_t stride = 64;  // plain ASCII, which most text is, goes in strides without the table
  for (; ascii_is_itself_ && left >= stride; in += stride, out += stride, left -= stride) {
    std::uint8_t any = 0;
    for (std::size_t i = 0; i < stride; ++i) any |= in[i];
    if (any < 0x80)
      std::copy_n(in, stride, out);
    else
      std::transform(in, in + stride, out, by_table);
  }
  std::transform(in, in + left, out, by_table);
  return bytes.size();
}

const SingleByteCodePage& windows_1252() {
  static const SingleByteCodePage page = [] {
    constexpr std::array<char16_t, 32> from_0x80 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    SingleByteCodePage::Characters characters{};
    for (unsigned code = 0; code < characters.size(); ++code) characters[code] = static_cast<char16_t>(code);
    std::copy(from_0x80.begin(), from_0x80.end(), characters.begin() + 0x80);
    return SingleByteCodePage(1252, characters);
  }();
  return page;
}

}  // namespace tornby
