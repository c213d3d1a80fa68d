// Saves one text to one file over and over, until somebody kills it. Usage: saver FILE LETTER LENGTH
#include <cstdlib>
#include <filesystem>

#include "checksums/clsApi.h"

namespace {

/// Without the native pointer the program needs no user interface, and starts sooner.
class NoPointer final : public tornby::MousePointer {
 public:
  void show_hourglass() const override {}
  void show_default() const override {}
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const tornby::String name = std::filesystem::path(argv[1]).u16string();
  const tornby::String text(std::strtoul(argv[3], nullptr, 10), static_cast<char16_t>(argv[2][0]));
  const NoPointer pointer;
  const tornby::clsApi api(tornby::native_code_page(), tornby::native_files(), pointer);
  for (int save = 0; save < 20'000; ++save) api.apiSaveFile(name, text);  // an end, should nobody kill it
}
