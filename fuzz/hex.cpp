// Any text as hexadecimal digits, deciphered: a text or error 13, and what was enciphered comes back.
#include "checksums/clsEncryptXOR.h"
#include "fuzz/target.h"

namespace tornby::fuzz {

void hex(Input input) {
  clsEncryptXOR cipher;
  cipher.Key(input.text(input.below(40)));
  const String text = input.text(4096);
  if (!cipher.Key().empty()) {
    REQUIRE(cipher.Decrypt(cipher.Encrypt(text)) == text);
    REQUIRE(cipher.HexDecrypt(cipher.HexEncrypt(text)) == text);
  }
  String plain;
  const std::int32_t error = raised([&] { plain = cipher.HexDecrypt(text); });
  REQUIRE(error == 0 || error == 13);
  REQUIRE(plain.size() <= text.size());
}

}  // namespace tornby::fuzz
