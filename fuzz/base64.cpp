// Any text as Base64: what is accepted comes back as the same text, and what is refused has a stated error.
#include "base/single_byte_code_page.h"
#include "checksums/clsWebEncryption.h"
#include "fuzz/target.h"

namespace tornby::fuzz {

void base64(Input input) {
  constexpr std::int32_t refused = -2147221504;
  const clsWebEncryption web(windows_1252());
  const ByteView bytes = input.rest();
  const Bytes encoded = web.bsEncode(bytes);
  REQUIRE(encoded.size() == (bytes.size() + 2) / 3 * 4);
  const Bytes back = web.bsDecode(encoded);
  REQUIRE(std::equal(back.begin(), back.end(), bytes.begin(), bytes.end()));

  Bytes decoded;
  const std::int32_t error = raised([&] { decoded = web.bsDecode(bytes); });
  REQUIRE(error == 0 || error == refused);
  if (bytes.size() % 4 != 0) REQUIRE(error == refused);
  if (error == 0) REQUIRE(decoded.size() <= bytes.size() / 4 * 3);

  const String text(bytes.begin(), bytes.end());
  String changed = text;
  const String digits = web.Encrypt(changed, u"key");
  String again = digits;
  REQUIRE(web.Decrypt(again, u"key") == windows_1252().decode(windows_1252().encode(text)));
}

}  // namespace tornby::fuzz
