// Shows one of the dialogs and prints what it gave.
// Usage: sample_dialogs open|several|short|prompt|save|folder|font|page|print|about [folder to start in]
//   short    an open dialog with too little room for any name: a message box reports it
//   prompt   an open dialog that cannot even be asked for: the prompt with its three buttons
#include <tornby/dialogs/clsDIALOGS.h>
#include <tornby/platform/text.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

/// The text, with a line break for each NUL.
void print(const char* label, tornby::StringView text) {
  std::string bytes = tornby::to_ansi(text);
  std::replace(bytes.begin(), bytes.end(), '\0', '\n');
  std::printf("%s: %s\n", label, bytes.c_str());
}

int show(tornby::clsDIALOGS& dialogs, std::string_view kind) {
  if (kind == "open" || kind == "several" || kind == "short" || kind == "prompt") {
    dialogs.blnAllowMultipleFileSelect(kind == "several");
    if (kind == "short") dialogs.lngMaxFileNameBuffer(3);
    if (kind == "prompt") dialogs.lngMaxFileNameBuffer(-1);
    print("opened", dialogs.strGetOpenFileName());
    print("folder", dialogs.strLastOpenFolder());
    std::printf("files: %d\n", dialogs.lngNumFilesSelected());
  } else if (kind == "save") {
    print("saved", dialogs.strGetSaveFileName());
  } else if (kind == "folder") {
    print("folder", dialogs.fstrBrowseForFolder(dialogs.lngHWnd()));
  } else if (kind == "font") {
    if (dialogs.blnChooseFont()) {
      print("font", dialogs.strFontFaceName());
      print("style", dialogs.strFontStyle());
      std::printf("points: %d\n", dialogs.lngFontSize());
    }
  } else if (kind == "page") {
    if (dialogs.blnPageSetup())
      std::printf("paper: %d x %d, left margin: %d thousandths of an inch\n", dialogs.lngPaperWidth(),
                  dialogs.lngPaperHeight(), dialogs.intLeftMargin());
  } else if (kind == "print") {
    std::printf("print: %s\n", dialogs.blnPrintDialog() ? "yes" : "no");
  } else if (kind == "about") {
    dialogs.flngShowAbout();
  } else {
    return 2;
  }
  print("error", dialogs.strDialogError());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  tornby::clsDIALOGS dialogs;
  dialogs.strFilter(u"Text files (*.txt;*.md)|*.txt;*.md|All files (*.*)|*.*");
  if (argc > 2) dialogs.strInitialDir(tornby::from_ansi(argv[2]));
  return show(dialogs, argv[1]);
}
