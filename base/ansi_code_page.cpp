#include "base/ansi_code_page.h"

namespace tornby {

Bytes AnsiCodePage::encode(StringView text) const {
  Bytes bytes(text.size() * bytes_per_unit());
  bytes.resize(encode(text, bytes.data()));
  return bytes;
}

String AnsiCodePage::decode(ByteView bytes) const {
  String text(bytes.size(), u'\0');
  text.resize(decode(bytes, text.data()));
  return text;
}

}  // namespace tornby
