// Prints the CRC-32 of each file named on the command line.
#include <checksums/clsCRC.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
  const tornby::clsCRC crc;
  for (int i = 1; i < argc; ++i) {
    const tornby::Variant result = crc.CalculateFile(tornby::widen(argv[i]));
    if (const auto* checksum = std::get_if<std::int32_t>(&result))
      std::printf("%08X  %s\n", static_cast<unsigned>(*checksum), argv[i]);
    else
      std::printf("%s  %s\n", tornby::is_empty(result) ? "(empty) " : "(failed)", argv[i]);
  }
}
