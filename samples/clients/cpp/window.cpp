// A control of the DLL in a window, placed by the system's own host, with its events.
// Usage: window    click on the link; close the window to end
#include <windows.h>

#include <olectl.h>
#include <tornby/automation/tornby_idl.h>

#include <cstdio>

#include "com.h"

namespace {

/// The system's host for controls, for as long as the object lives. Microsoft's compiler has the same in <atlhost.h>.
class ControlHost {
 public:
  ControlHost() : library_(::LoadLibraryW(L"atl.dll")) {
    const auto start = entry<BOOL(WINAPI*)()>("AtlAxWinInit");
    if (!start || !start()) throw com::Error(E_FAIL, L"the system has no host for controls");
  }
  ~ControlHost() { ::FreeLibrary(library_); }
  ControlHost(const ControlHost&) = delete;
  ControlHost& operator=(const ControlHost&) = delete;

  com::Ref<IUnknown> control_in(HWND window) const {
    com::Ref<IUnknown> control;
    const auto get = entry<HRESULT(WINAPI*)(HWND, IUnknown**)>("AtlAxGetControl");
    const HRESULT result = get(window, control.out());
    if (FAILED(result)) throw com::Error(result, L"the host could not make the control: is the DLL registered?");
    return control;
  }

 private:
  template <class Entry>
  Entry entry(const char* name) const {
    return reinterpret_cast<Entry>(reinterpret_cast<void*>(::GetProcAddress(library_, name)));
  }

  HMODULE library_;
};

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_DESTROY) ::PostQuitMessage(0);
  return ::DefWindowProcW(window, message, first, second);
}

HWND make_window() {
  WNDCLASSW kind = {};
  kind.lpfnWndProc = procedure;
  kind.hInstance = ::GetModuleHandleW(nullptr);
  kind.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  kind.lpszClassName = L"TornbyClient";
  if (!::RegisterClassW(&kind)) com::check(HRESULT_FROM_WIN32(::GetLastError()));
  const HWND window = ::CreateWindowW(kind.lpszClassName, L"Tornby client", WS_OVERLAPPEDWINDOW, 100, 100, 320, 140,
                                      nullptr, nullptr, kind.hInstance, nullptr);
  if (!window) com::check(HRESULT_FROM_WIN32(::GetLastError()));
  return window;
}

void run() {
  const ControlHost controls;
  const HWND window = make_window();
  // The host window makes the control that its text names, and activates it.
  const HWND host = ::CreateWindowW(L"AtlAxWin", L"Tornby.kelHyperLabel", WS_CHILD | WS_VISIBLE, 20, 20, 240, 24,
                                    window, nullptr, nullptr, nullptr);
  const auto link = com::as<IkelHyperLabel>(controls.control_in(host));
  com::check(link->put_Caption(com::String(L"Open the manual")));
  com::check(link->put_Alignment(alignTextCentre));
  RECT area = {};
  ::GetClientRect(::GetWindow(host, GW_CHILD), &area);
  std::printf("in place: %ld pixels wide\n", area.right);

  const com::Events events(link, __uuidof(DkelHyperLabelEvents), [&](DISPID event, DISPPARAMS& arguments) {
    if (event == DISPID_CLICK) {
      std::puts("event Click");
      com::check(link->put_Caption(com::String(L"Clicked")));
    }
    if (event == 2) std::printf("event MouseUp: button %d\n", *arguments.rgvarg[0].piVal);
  });

  ::ShowWindow(window, SW_SHOW);
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
  com::String caption;
  com::check(link->get_Caption(caption.out()));
  std::printf("caption at the end: %ls\n", caption.view().data());
}

}  // namespace

int wmain() {
  try {
    const com::Apartment apartment;
    run();
    std::puts(com::all_released(L"tornby.dll") ? "all released" : "NOT all released");
    return 0;
  } catch (const com::Error& error) {
    std::fprintf(stderr, "failed with %ld: %ls\n", error.number, error.text.c_str());
    return 1;
  }
}
