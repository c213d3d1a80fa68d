// Prints the CRC-32 of each file named on the command line.
#include <tornby/checksums/clsApi.h>
#include <tornby/checksums/clsCRC.h>
#include <tornby/platform/text.h>

#include <cstdio>
#include <string>

namespace {

/// The same in every program, where the ANSI code page has one byte a character. Empty for a file that is empty or
/// cannot be read.
tornby::Variant checksum_of(tornby::StringView file_name) {
  const tornby::String content = tornby::clsApi().ApiReadFile(file_name);
  return content.empty() ? tornby::Variant() : tornby::clsCRC().AddString(content);
}

}  // namespace

int main(int argc, char** argv) {
  int status = 0;
  for (int i = 1; i < argc; ++i) {
    const tornby::Variant result = checksum_of(tornby::from_ansi(argv[i]));
    if (const auto* checksum = std::get_if<std::int32_t>(&result)) {
      std::printf("%08X  %s\n", static_cast<unsigned>(*checksum), argv[i]);
    } else {
      std::printf("empty or not readable  %s\n", argv[i]);
      status = 1;
    }
  }
  return status;
}
