#include "base/single_byte_code_page.h"

#include <algorithm>
#include <utility>

namespace tornby {
namespace {

UnitCodes inverse(const Characters& characters) {
  UnitCodes codes(0x10000, std::uint8_t{'?'});
  for (unsigned code = 256; code-- > 0;) codes[characters[code]] = static_cast<std::uint8_t>(code);
  return codes;
}

/// The longest run above ASCII, of characters whose codes lead back to them.
CodeRun longest_run(const Characters& characters, const UnitCodes& codes) {
  CodeRun longest, current;
  for (unsigned code = 0x80; code < characters.size(); ++code) {
    const char16_t character = characters[code];
    const bool goes_on = current.length != 0 && character == current.first + current.length;
    if (!goes_on) current = {character, static_cast<std::uint8_t>(code), 0};
    if (character >= 0x80 && codes[character] == code)
      ++current.length;
    else
      current.length = 0;
    if (current.length > longest.length) longest = current;
  }
  return longest;
}

/// The codes for encode_each, from those for encode.
UnitCodes each_code(const Characters& characters, UnitCodes codes) {
  for (unsigned unit = 0; unit < codes.size(); ++unit)
    if (unit < 0x80 || characters[codes[unit]] != unit)
      codes[unit] = static_cast<std::uint8_t>(unit < 0x100 ? unit : u'?');
  return codes;
}

}  // namespace

SingleByteCodePage::SingleByteCodePage(unsigned identifier, const Characters& characters, UnitCodes codes)
    : identifier_(identifier),
      characters_(characters),
      map_(characters, longest_run(characters, codes)),
      codes_(characters, codes, map_.run),
      each_codes_(characters, each_code(characters, std::move(codes)), map_.run) {
  for (unsigned code = 0; code < 0x80; ++code)
    ascii_is_itself_ = ascii_is_itself_ && characters_[code] == code && codes_.of[code] == code;
}

SingleByteCodePage::SingleByteCodePage(unsigned identifier, const Characters& characters)
    : SingleByteCodePage(identifier, characters, inverse(characters)) {}

std::size_t SingleByteCodePage::encode(StringView text, std::uint8_t* out) const {
  encode_by(codes_, text, out);
  return text.size();
}

void SingleByteCodePage::encode_each(StringView text, std::uint8_t* out) const {
  encode_by(each_codes_, text, out);
}

void SingleByteCodePage::encode_by(const Codes& codes, StringView text, std::uint8_t* out) const {
  const auto by_table = [table = codes.of.data()](char16_t unit) { return table[unit]; };
  while (!text.empty()) {
    const std::size_t done = ascii_is_itself_ ? code_maps().narrow(text.data(), text.size(), out, &codes.map) : 0;
    if (done == text.size()) return;
    const std::size_t rest = text.size() - done;
    const StringView others = text.substr(done, ascii_is_itself_ ? std::min(rest, code_stride) : rest);
    out = std::transform(others.begin(), others.end(), out + done, by_table);
    text.remove_prefix(done + others.size());
  }
}

std::size_t SingleByteCodePage::decode(ByteView bytes, char16_t* out) const {
  const auto by_table = [this](std::uint8_t code) { return characters_[code]; };
  for (ByteView left = bytes; !left.empty();) {
    const std::size_t done = ascii_is_itself_ ? code_maps().widen(left.data(), left.size(), out, map_) : 0;
    if (done == left.size()) break;
    const std::size_t rest = left.size() - done;
    const ByteView others = left.subspan(done, ascii_is_itself_ ? std::min(rest, code_stride) : rest);
    out = std::transform(others.begin(), others.end(), out + done, by_table);
    left = left.subspan(done + others.size());
  }
  return bytes.size();
}

const SingleByteCodePage& windows_1252() {
  static const SingleByteCodePage page = [] {
    constexpr std::array<char16_t, 32> from_0x80 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    Characters characters{};
    for (unsigned code = 0; code < characters.size(); ++code) characters[code] = static_cast<char16_t>(code);
    std::copy(from_0x80.begin(), from_0x80.end(), characters.begin() + 0x80);
    return SingleByteCodePage(1252, characters);
  }();
  return page;
}

}  // namespace tornby
