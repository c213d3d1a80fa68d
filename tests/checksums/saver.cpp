// Saves one text to one file over and over, until somebody kills it. Usage: saver WAY FILE LETTER LENGTH, the way being
// "replaced" or "refused" (tests/support/refusing_files.h).
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "checksums/clsApi.h"
#include "support/refusing_files.h"

namespace {

/// Without the native pointer the program needs no user interface, and starts sooner.
class NoPointer final : public tornby::MousePointer {
 public:
  void show_hourglass() const override {}
  void show_default() const override {}
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) return 2;
  const tornby::String name = std::filesystem::path(argv[2]).u16string();
  const tornby::String text(std::strtoul(argv[4], nullptr, 10), static_cast<char16_t>(argv[3][0]));
  const NoPointer pointer;
  const tornby::testing::RefusingFiles refusing;
  const bool refused = std::string_view(argv[1]) == "refused";
  const tornby::Files& files = refused ? static_cast<const tornby::Files&>(refusing) : tornby::native_files();
  const tornby::clsApi api(tornby::native_code_page(), files, pointer);
  for (int save = 0; save < 20'000; ++save) api.apiSaveFile(name, text);  // an end, should nobody kill it
}
