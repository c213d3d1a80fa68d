#include "platform/pointer.h"

#include "platform/windows/system.h"

namespace tornby {
namespace {

BOOL CALLBACK note_window(HWND, LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return FALSE;
}

/// A thread without windows has no pointer to change, and asking for one would make the system start a desktop for it.
void show(LPSTR cursor) {
  bool has_windows = false;
  ::EnumThreadWindows(::GetCurrentThreadId(), note_window, reinterpret_cast<LPARAM>(&has_windows));
  if (has_windows) ::SetCursor(::LoadCursorA(nullptr, cursor));
}

class WindowsPointer final : public Pointer {
 public:
  void show_hourglass() const override { show(IDC_WAIT); }
  void show_default() const override { show(IDC_ARROW); }
};

}  // namespace

const Pointer& native_pointer() {
  static const WindowsPointer pointer;
  return pointer;
}

}  // namespace tornby
