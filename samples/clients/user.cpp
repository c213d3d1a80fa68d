// Stands in for a user: waits for a window of that caption, clicks with the left button at a place in it, and closes
// it. Usage: user caption x y
#include <windows.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// The window, once it is there; null when it does not come.
HWND wait_for(const char* caption) {
  for (int tenths = 0; tenths < 300; ++tenths) {
    const HWND window = ::FindWindowA(nullptr, caption);
    if (window && ::IsWindowVisible(window)) return window;
    ::Sleep(100);
  }
  return nullptr;
}

void mouse(DWORD what) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = what;
  ::SendInput(1, &input, sizeof input);
  ::Sleep(100);  // nobody is faster
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const HWND window = wait_for(argv[1]);
  if (!window) {
    std::fprintf(stderr, "no window \"%s\" appeared\n", argv[1]);
    return 1;
  }
  ::Sleep(300);  // until it is painted
  POINT place = {std::atol(argv[2]), std::atol(argv[3])};
  ::ClientToScreen(window, &place);
  ::SetForegroundWindow(window);
  ::SetCursorPos(place.x, place.y);
  ::Sleep(100);
  mouse(MOUSEEVENTF_LEFTDOWN);
  mouse(MOUSEEVENTF_LEFTUP);
  ::Sleep(300);
  ::PostMessageA(window, WM_CLOSE, 0, 0);
  return 0;
}
