// The ActiveX controls in the system's own host, which has no ambient properties and no bag.
#include <gtest/gtest.h>

#include "placed_control.h"
#include "support/holdings.h"

namespace tornby {
namespace {

using namespace testing;

/// atl.dll, for as long as the object lives.
class SystemHost {
 public:
  SystemHost() : library_(::LoadLibraryA("atl.dll")) {
    EXPECT_TRUE(entry<BOOL(WINAPI*)()>("AtlAxWinInit")());
    window_ = ::CreateWindowExA(0, "STATIC", "form", WS_POPUP | WS_VISIBLE, 50, 50, 400, 300, nullptr, nullptr, nullptr,
                                nullptr);
  }
  ~SystemHost() {
    ::DestroyWindow(window_);
    ::FreeLibrary(library_);
  }
  SystemHost(const SystemHost&) = delete;
  SystemHost& operator=(const SystemHost&) = delete;

  /// A host window, which makes the control that its text names.
  HWND place(const char* name, const RECT& area) const {
    return ::CreateWindowExA(0, "AtlAxWin", name, WS_CHILD | WS_VISIBLE, area.left, area.top, area.right - area.left,
                             area.bottom - area.top, window_, nullptr, nullptr, nullptr);
  }
  template <class Interface>
  ComPtr<Interface> control_in(HWND host) const {
    ComPtr<IUnknown> control;
    EXPECT_EQ(entry<HRESULT(WINAPI*)(HWND, IUnknown**)>("AtlAxGetControl")(host, control.out()), S_OK);
    return as<Interface>(control);
  }
  /// Puts a control that exists into a host window. It is not told then that it is a new one.
  void attach(IUnknown* control, HWND host) const {
    ComPtr<IUnknown> container;
    const auto attach = entry<HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**)>("AtlAxAttachControl");
    EXPECT_EQ(attach(control, host, container.out()), S_OK);
  }

 private:
  template <class Entry>
  Entry entry(const char* name) const {
    return reinterpret_cast<Entry>(reinterpret_cast<void*>(::GetProcAddress(library_, name)));
  }

  HMODULE library_;
  HWND window_ = nullptr;
};

SIZE size_of(HWND window) {
  RECT area = {};
  ::GetWindowRect(window, &area);
  return {area.right - area.left, area.bottom - area.top};
}

void place_and_use_all(const Server& server, const SystemHost& system) {
  const HWND link_host = system.place("Tornby.kelHyperLabel", {10, 60, 210, 90});
  const HWND browse_host = system.place("Tornby.kelBrowseButton", {10, 100, 210, 124});
  const HWND label_host = system.place(nullptr, {10, 10, 210, 50});
  {
    const auto link = system.control_in<IkelHyperLabel>(link_host);
    const auto label = server.create<IkelLabel>(CLSID_kelLabel);
    label->put_AutoSize(VARIANT_FALSE);
    system.attach(label.get(), label_host);

    const HWND label_window = ::GetWindow(label_host, GW_CHILD);
    const HWND link_window = ::GetWindow(link_host, GW_CHILD);
    const HWND browse_window = ::GetWindow(browse_host, GW_CHILD);
    ASSERT_TRUE(label_window && link_window && browse_window);
    EXPECT_EQ(size_of(label_window).cx, 200);
    EXPECT_EQ(size_of(label_window).cy, 40);
    ::MoveWindow(browse_host, 10, 100, 260, 30, TRUE);
    EXPECT_EQ(size_of(browse_window).cx, 260);
    EXPECT_EQ(size_of(browse_window).cy, 30);

    ComPtr<IFontDisp> font;
    ASSERT_EQ(label->get_Font(font.out()), S_OK);
    CY points = {};
    as<IFont>(font)->get_Size(&points);
    EXPECT_EQ(points.int64, 82500) << "the default, without an ambient font";

    FakeSink sink;
    const Connection clicks(link, __uuidof(DkelHyperLabelEvents), static_cast<IDispatch*>(&sink));
    ::SendMessageA(link_window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    ::SendMessageA(link_window, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    EXPECT_EQ(sink.events, (std::vector<DISPID>{DISPID_CLICK, 2}));
    for (const HWND window : {label_window, link_window, browse_window}) ::UpdateWindow(window);
  }
  for (const HWND host : {link_host, browse_host, label_host}) ::DestroyWindow(host);
}

TEST(ControlsInSystemHost, LiveThereAndLeaveNothingBehind) {
  const OleLibraries ole;
  const Server server;
  const ManifestActivation manifest;
  const SystemHost system;
  expect_nothing_left_behind([&] { place_and_use_all(server, system); });
  EXPECT_TRUE(server.is_idle());
}

}  // namespace
}  // namespace tornby
