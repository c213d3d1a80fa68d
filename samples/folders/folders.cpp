// Prints each path named on the command line with tokens in place of special folders.
#include <tornby/platform/text.h>
#include <tornby/settings/PathClass.h>

#include <cstdio>

int main(int argc, char** argv) {
  const tornby::PathClass paths;
  for (int i = 1; i < argc; ++i) {
    tornby::String path = tornby::from_ansi(argv[i]);
    paths.ProcessPath(path, false);
    std::puts(tornby::to_ansi(path).c_str());
  }
}
