// Prints each path named on the command line with tokens in place of special folders.
#include <tornby/settings/PathClass.h>

#include <cstdio>

int main(int argc, char** argv) {
  const tornby::PathClass paths;
  for (int i = 1; i < argc; ++i) {
    tornby::String path = tornby::widen(argv[i]);
    paths.ProcessPath(path, false);
    for (const char16_t unit : path) std::putchar(unit < 0x80 ? static_cast<char>(unit) : '?');
    std::putchar('\n');
  }
}
