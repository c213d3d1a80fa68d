// Stands in for a user: waits for a dialog of that caption, types a name into it and presses OK, or presses Cancel.
// Usage: sample_dialogs_answer caption [name]
#include <windows.h>

#include <cstdio>

namespace {

constexpr int name_field = 1148;

BOOL CALLBACK find_edit(HWND window, LPARAM found) {
  char kind[16] = {};
  ::GetClassNameA(window, kind, sizeof kind);
  if (::GetDlgCtrlID(window) != name_field || ::lstrcmpA(kind, "Edit") != 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

/// The dialog, once it is there and can be used; null when it does not come.
HWND wait_for(const char* caption) {
  for (int tenths = 0; tenths < 300; ++tenths) {
    const HWND dialog = ::FindWindowA("#32770", caption);
    if (dialog && ::IsWindowVisible(dialog)) return dialog;
    ::Sleep(100);
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const HWND dialog = wait_for(argv[1]);
  if (!dialog) {
    std::fprintf(stderr, "no dialog \"%s\" appeared\n", argv[1]);
    return 1;
  }
  ::Sleep(200);  // until its lists are filled
  HWND field = nullptr;
  ::EnumChildWindows(dialog, find_edit, reinterpret_cast<LPARAM>(&field));
  if (argc > 2 && field) ::SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(argv[2]));
  ::PostMessageA(dialog, WM_COMMAND, argc > 2 ? IDOK : IDCANCEL, 0);
  return 0;
}
