// Enciphers a text file in place, or deciphers it again, as hexadecimal digits. Should anything fail, the file is as it
// was.
// Usage: text encipher|decipher file key
#include <tornby/checksums/clsApi.h>
#include <tornby/checksums/clsEncryptXOR.h>
#include <tornby/platform/text.h>

#include <cstdio>
#include <string_view>

int main(int argc, char** argv) {
  if (argc != 4) {
    std::puts("usage: text encipher|decipher file key");
    return 2;
  }
  const tornby::String name = tornby::from_ansi(argv[2]);
  const tornby::clsApi api;
  tornby::clsEncryptXOR cipher;
  cipher.Key(tornby::from_ansi(argv[3]));

  tornby::String text = api.ApiReadFile(name);
  if (text.ends_with(u"\r\n")) text.resize(text.size() - 2);  // apiSaveFile puts it back
  text = std::string_view(argv[1]) == "decipher" ? cipher.HexDecrypt(text) : cipher.HexEncrypt(text);
  if (text.empty() || !api.apiSaveFile(name, text)) {
    std::printf("nothing done to %s\n", argv[2]);
    return 1;
  }
}
