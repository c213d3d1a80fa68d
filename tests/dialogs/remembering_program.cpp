// A program that opens a file and remembers it.
// Arguments: the file to report to; then, unless no dialog is to be opened, the folder and the file to open.
#include <fstream>

#include "real_dialogs.h"

using tornby::clsDIALOGS;
using tornby::String;
namespace support = tornby::testing;

int main(int argc, char** argv) {
  if (argc != 2 && argc != 4) return 2;
  clsDIALOGS dialogs;
  if (argc == 4) {
    const std::string folder = argv[2];
    dialogs.strInitialDir(String(folder.begin(), folder.end()));
    const support::Answers answers = {support::type_name(argv[3])};
    if (dialogs.strGetOpenFileName().empty()) return 3;
  }
  std::ofstream(argv[1], std::ios::binary) << support::text(dialogs.strInitialDir()) << '\n'
                                           << support::text(dialogs.strLastOpenFolder()) << '\n'
                                           << support::text(dialogs.strLastOpenFile()) << '\n'
                                           << support::text(dialogs.strLastSaveFile()) << '\n';
  return 0;
}
