#include "base/ansi_code_page.h"

namespace tornby {

void AnsiCodePage::encode_each(StringView text, std::uint8_t* out) const {
  std::transform(text.begin(), text.end(), out, [this](char16_t character) {
    if (character < 0x80) return static_cast<std::uint8_t>(character);
    const unsigned code = code_of(character);
    const auto byte = static_cast<std::uint8_t>(code);
    std::array<char16_t, 1> back;
    if (code < 0x100 && decode(ByteView(&byte, 1), back.data()) == 1 && back[0] == character) return byte;
    return static_cast<std::uint8_t>(character < 0x100 ? character : u'?');
  });
}

Bytes AnsiCodePage::encode(StringView text) const {
  Bytes bytes;
  bytes.reserve(text.size() * bytes_per_unit());
  encode_by_blocks(text, [&bytes](ByteView block) { bytes.insert(bytes.end(), block.begin(), block.end()); });
  return bytes;
}

String AnsiCodePage::decode(ByteView bytes) const {
  if (bytes_per_unit() != 1) {  // blocks would cut a two-byte character in half
    String text(bytes.size(), u'\0');
    text.resize(decode(bytes, text.data()));
    return text;
  }
  String text;
  text.reserve(bytes.size());
  std::array<char16_t, block_size> block;
  while (!bytes.empty()) {
    const ByteView some = bytes.first(std::min(block.size(), bytes.size()));
    text.append(block.data(), decode(some, block.data()));
    bytes = bytes.subspan(some.size());
  }
  return text;
}

}  // namespace tornby
