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

/// The longest run above ASCII, of characters whose codes lead back to them.
CodeRun longest_run(const SingleByteCodePage::Characters& characters, const std::vector<std::uint8_t>& codes) {
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

/// A run made longer as far as these codes go on with it.
CodeRun extended(CodeRun run, const std::vector<std::uint8_t>& codes) {
  if (run.length == 0) return run;
  while (run.first > 0x80 && run.code > 0x80 && codes[run.first - 1u] == run.code - 1) {
    --run.first;
    --run.code;
    ++run.length;
  }
  while (run.code + run.length < 0x100 && run.first + run.length < 0x10000 &&
         codes[static_cast<std::size_t>(run.first + run.length)] == run.code + run.length)
    ++run.length;
  return run;
}

/// The codes for encode_each, from those for encode.
std::vector<std::uint8_t> each_code(const SingleByteCodePage::Characters& characters, std::vector<std::uint8_t> codes) {
  for (unsigned unit = 0; unit < codes.size(); ++unit)
    if (unit < 0x80 || characters[codes[unit]] != unit)
      codes[unit] = static_cast<std::uint8_t>(unit < 0x100 ? unit : u'?');
  return codes;
}

}  // namespace

SingleByteCodePage::SingleByteCodePage(unsigned identifier, const Characters& characters,
                                       std::vector<std::uint8_t> codes)
    : identifier_(identifier), characters_(characters) {
  for (unsigned code = 0; code < 0x80; ++code)
    ascii_is_itself_ = ascii_is_itself_ && characters_[code] == code && codes[code] == code;
  run_ = longest_run(characters_, codes);
  each_codes_.of = each_code(characters_, codes);
  each_codes_.run = extended(run_, each_codes_.of);
  codes_ = {std::move(codes), run_};
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
    const std::size_t done = ascii_is_itself_ ? code_runs().narrow(text.data(), text.size(), out, codes.run) : 0;
    const std::size_t rest = text.size() - done;
    const StringView others = text.substr(done, ascii_is_itself_ ? std::min(rest, code_run_stride) : rest);
    out = std::transform(others.begin(), others.end(), out + done, by_table);
    text.remove_prefix(done + others.size());
  }
}

std::size_t SingleByteCodePage::decode(ByteView bytes, char16_t* out) const {
  const auto by_table = [this](std::uint8_t code) { return characters_[code]; };
  for (ByteView left = bytes; !left.empty();) {
    const std::size_t done = ascii_is_itself_ ? code_runs().widen(left.data(), left.size(), out, run_) : 0;
    const std::size_t rest = left.size() - done;
    const ByteView others = left.subspan(done, ascii_is_itself_ ? std::min(rest, code_run_stride) : rest);
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
    SingleByteCodePage::Characters characters{};
    for (unsigned code = 0; code < characters.size(); ++code) characters[code] = static_cast<char16_t>(code);
    std::copy(from_0x80.begin(), from_0x80.end(), characters.begin() + 0x80);
    return SingleByteCodePage(1252, characters);
  }();
  return page;
}

}  // namespace tornby
