// What surrounds a control: the screen's resolution, the scheme of colours, the form's direction of reading and its
// default button. The tests of resolution run at more than one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "controls/kelBrowseButton.h"
#include "controls/kelHyperLabel.h"
#include "controls/kelLabel.h"
#include "controls/windows/window_host.h"

namespace tornby::windows {
namespace {

class Form {
 public:
  explicit Form(DWORD extended = 0)
      : window_(::CreateWindowExA(extended, "STATIC", "form", WS_POPUP | WS_VISIBLE, 50, 50, 400, 300, nullptr, nullptr,
                                  nullptr, nullptr)) {}
  ~Form() { ::DestroyWindow(window_); }
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  operator HWND() const { return window_; }

 private:
  HWND window_;
};

SIZE client_size(HWND window) {
  RECT client{};
  ::GetClientRect(window, &client);
  return {client.right, client.bottom};
}

/// One of each control, with what has a size of its own.
struct Trio {
  explicit Trio(HWND form)
      : label(form, {0, 0, 10, 10}),
        link(form, {0, 40, 200, 50}),
        picture(form, {0, 80, 200, 90}),
        browse(form, {0, 120, 200, 170}) {
    struct Square final : Picture {
      std::int32_t width() const override { return 1270; }
      std::int32_t height() const override { return 1270; }
    };
    label->Font({.size = 24});
    label->Refresh();
    link->Caption(u"A link");
    picture->Picture(std::make_shared<Square>());
  }
  SIZE edit_size() const { return client_size(::GetWindow(browse.window(), GW_CHILD)); }
  std::vector<LONG> sizes() const {
    return {client_size(label.window()).cx, client_size(label.window()).cy, client_size(link.window()).cy,
            client_size(picture.window()).cy, edit_size().cy};
  }

  ControlWindow<kelLabel> label;
  ControlWindow<kelHyperLabel> link, picture;
  ControlWindow<kelBrowseButton> browse;
};

TEST(Resolution, SizesFollowIt) {
  const ScreenContext screen;
  const int dots = ::GetDeviceCaps(screen, LOGPIXELSY);
  if (const char* wanted = std::getenv("TORNBY_RESOLUTION")) {
    ASSERT_EQ(dots, std::atoi(wanted));
  }
  const Form form;
  const Trio trio(form);
  EXPECT_NEAR(client_size(trio.label.window()).cy, 24 * dots / 72 * 1.2, 24 * dots / 72 * 0.2);
  EXPECT_NEAR(client_size(trio.link.window()).cy, 8.25 * dots / 72 * 1.2, 8.25 * dots / 72 * 0.2);
  EXPECT_EQ(client_size(trio.picture.window()).cy, dots / 2);
  EXPECT_EQ(trio.edit_size().cx, client_size(trio.browse.window()).cx - ::GetSystemMetrics(SM_CXVSCROLL) - 10);
  EXPECT_NEAR(trio.edit_size().cy, client_size(trio.link.window()).cy, 1) << "the fonts are the same";
}

// A program that knows of resolutions has windows of 96 dots too, for parts that do not.
TEST(Resolution, FollowsTheFormToAnotherScreen) {
  const auto set_awareness = reinterpret_cast<void*(WINAPI*)(void*)>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("user32.dll"), "SetThreadDpiAwarenessContext")));
  const ScreenContext screen;
  if (!set_awareness || ::GetDeviceCaps(screen, LOGPIXELSY) == 96) GTEST_SKIP() << "all windows have 96 dots here";
  void* const unaware = reinterpret_cast<void*>(-1);
  void* const before = set_awareness(unaware);
  const Form plain_form;
  const Trio plain(plain_form);
  set_awareness(before);
  const Form fine_form;
  const Trio moved(fine_form);
  EXPECT_NE(moved.sizes(), plain.sizes());
  const HWND edit = ::GetWindow(moved.browse.window(), GW_CHILD);
  for (const HWND window : {moved.label.window(), moved.link.window(), moved.picture.window(), moved.browse.window()}) {
    ::SetParent(window, plain_form);
    if (window == ::GetParent(edit)) {  // under Wine children do not follow by themselves
      ::SetParent(edit, plain_form);
      ::SetParent(edit, window);
    }
    ::SendMessageA(window, 0x02E3, 0, 0);  // WM_DPICHANGED_AFTERPARENT
  }
  EXPECT_EQ(moved.sizes(), plain.sizes());
  for (const int x : {60, 40}) {
    ::SendMessageA(moved.picture.window(), WM_MOUSEMOVE, 0, MAKELPARAM(x, 5));
    EXPECT_EQ(::GetCapture() == moved.picture.window(), x == 40) << "the picture is 48 pixels wide";
  }
}

struct Surrounding final : ControlSite {
  bool reads_from_right = false;
  bool is_default = false;
  bool right_to_left() const override { return reads_from_right; }
  bool displays_as_default() const override { return is_default; }
};

/// What a control draws into a metafile.
struct Recorded {
  std::set<COLORREF> text_colors;
  bool from_right = false;

  explicit Recorded(WindowHost& host) {
    const HDC context = ::CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
    host.draw(context, {0, 0, host.size().cx, host.size().cy});
    const HENHMETAFILE file = ::CloseEnhMetaFile(context);
    ::EnumEnhMetaFile(nullptr, file, &Recorded::take, this, nullptr);
    ::DeleteEnhMetaFile(file);
  }
  static int CALLBACK take(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM self) {
    auto& all = *reinterpret_cast<Recorded*>(self);
    if (record->iType == EMR_SETTEXTCOLOR)
      all.text_colors.insert(reinterpret_cast<const EMRSETTEXTCOLOR*>(record)->crColor);
    if (record->iType == EMR_EXTTEXTOUTW)
      all.from_right |= (reinterpret_cast<const EMREXTTEXTOUTW*>(record)->emrtext.fOptions & ETO_RTLREADING) != 0;
    return 1;
  }
};

TEST(Direction, TextsAreReadAsTheFormIs) {
  const Form form;
  const auto site = std::make_shared<Surrounding>();
  ControlWindow<kelBrowseButton> browse(form, {10, 10, 210, 40}, site);
  ControlWindow<kelLabel> label(form, {10, 50, 210, 80}, site);
  browse->Text(u"C:\\data");
  const auto edit = [&] { return ::GetWindow(browse.window(), GW_CHILD); };
  ::SetFocus(browse.window());
  ::SendMessageA(edit(), EM_SETSEL, 1, 4);
  for (const bool from_right : {false, true, false}) {
    site->reads_from_right = from_right;
    browse.host().form_changed();
    EXPECT_EQ((::GetWindowLongA(edit(), GWL_STYLE) & ES_RIGHT) != 0, from_right);
    EXPECT_EQ((::GetWindowLongA(edit(), GWL_EXSTYLE) & WS_EX_RTLREADING) != 0, from_right);
    EXPECT_EQ(::GetFocus(), edit());
    EXPECT_EQ(::SendMessageA(edit(), EM_GETSEL, 0, 0), MAKELONG(1, 4));
    EXPECT_EQ(::GetWindowTextLengthA(edit()), 7);
    EXPECT_EQ(Recorded(browse.host()).from_right, from_right);
    EXPECT_EQ(Recorded(label.host()).from_right, from_right);
    EXPECT_EQ(label->Alignment(), 0) << "a setting stays as it is";
    EXPECT_EQ(ControlWindow<kelLabel>(form, {10, 90, 210, 120}, site)->Alignment(), from_right ? 1 : 0);
    EXPECT_EQ(ControlWindow<kelHyperLabel>(form, {10, 90, 210, 120}, site)->Alignment(), from_right ? 1 : 0);
  }
  browse->Text(u"D:\\");
  EXPECT_EQ(::GetWindowTextLengthA(edit()), 3);
}

COLORREF color_at(HWND window, int x, int y) {
  ::UpdateWindow(window);
  const HDC context = ::GetWindowDC(window);
  const COLORREF color = ::GetPixel(context, x, y);
  ::ReleaseDC(window, context);
  return color;
}

TEST(Direction, AMirroredFormMirrorsPlacesButNoTexts) {
  const Form plain, mirrored(WS_EX_LAYOUTRTL);
  const auto letters = [](ControlWindow<kelHyperLabel>& link) {
    ::UpdateWindow(link.window());
    const HDC context = ::GetDC(link.window());
    ::SetLayout(context, 0);  // the pixels as they are
    const COLORREF ground = ::GetSysColor(COLOR_BTNFACE);
    std::vector<POINT> found;
    LONG left = 100;  // as far as letters at the left reach
    for (LONG y = 0; y < 10; ++y)
      for (LONG x = 0; x < 100; ++x)
        if (::GetPixel(context, x, y) != ground) found.push_back({x, y}), left = std::min(left, x);
    ::ReleaseDC(link.window(), context);
    std::string shape;
    for (const POINT& at : found) shape += std::to_string(at.x - left) + ',' + std::to_string(at.y) + ' ';
    return shape;
  };
  ControlWindow<kelHyperLabel> link(plain, {0, 0, 200, 20}), mirror(mirrored, {0, 0, 200, 20});
  link->Caption(u"EF");
  mirror->Caption(u"EF");
  mirror->Alignment(1);  // which is the left, there
  EXPECT_GT(letters(link).size(), 20u);
  EXPECT_EQ(letters(mirror), letters(link));
}

TEST(DefaultButton, HasAFrame) {
  const Form form;
  const auto site = std::make_shared<Surrounding>();
  ControlWindow<kelBrowseButton> browse(form, {10, 10, 210, 40}, site);
  browse->BorderApperance(0);
  const COLORREF frame = ::GetSysColor(COLOR_BTNTEXT);
  ASSERT_NE(color_at(browse.window(), 190, 0), frame);
  for (const bool is_default : {true, false}) {
    site->is_default = is_default;
    browse.host().form_changed();
    EXPECT_EQ(color_at(browse.window(), 190, 0) == frame, is_default);
    browse->setDown();
    EXPECT_EQ(color_at(browse.window(), 190, 0) == frame, is_default);
  }
}

// The scheme that the user has chosen cannot be set for a test; what the library asks the system for it is replaced.
#ifdef _WIN64
extern "C" void* system_parameters asm("__imp_SystemParametersInfoW");
#else
extern "C" void* system_parameters asm("__imp__SystemParametersInfoW@16");
#endif
BOOL WINAPI high_contrast(UINT, UINT, void* answer, UINT) {
  static_cast<HIGHCONTRASTW*>(answer)->dwFlags = HCF_HIGHCONTRASTON;
  return TRUE;
}

class HighContrast {
 public:
  HighContrast() { write(reinterpret_cast<void*>(&high_contrast)); }
  ~HighContrast() { write(original_); }
  HighContrast(const HighContrast&) = delete;
  HighContrast& operator=(const HighContrast&) = delete;

 private:
  void write(void* function) {
    DWORD protection = 0;
    ::VirtualProtect(&system_parameters, sizeof function, PAGE_READWRITE, &protection);
    original_ = std::exchange(system_parameters, function);
    ::VirtualProtect(&system_parameters, sizeof function, protection, &protection);
  }
  void* original_ = nullptr;
};

TEST(HighContrast, TextsCanBeRead) {
  const Form form;
  ControlWindow<kelHyperLabel> link(form, {10, 10, 210, 40});
  ControlWindow<kelBrowseButton> browse(form, {10, 50, 210, 80});
  link->Caption(u"A link");
  const auto shown = [&] { return Recorded(link.host()).text_colors; };
  const auto typed = [&] {
    const ScreenContext context;
    ::SendMessageA(browse.window(), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(static_cast<HDC>(context)),
                   reinterpret_cast<LPARAM>(::GetWindow(browse.window(), GW_CHILD)));
    return ::GetTextColor(context);
  };
  constexpr Color black = 0;
  link->BackColor(black);
  browse->BackColor(black);
  const Color plain = link->LinkColor();
  EXPECT_TRUE(shown().contains(plain)) << "as it was set";
  EXPECT_EQ(typed(), ::GetSysColor(COLOR_WINDOWTEXT));
  const HighContrast scheme;
  const COLORREF hot = ::GetSysColor(COLOR_HOTLIGHT);
  EXPECT_TRUE(shown().contains(contrast(hot, black) >= 4.5 ? hot : 0xFFFFFF));
  EXPECT_FALSE(shown().contains(plain));
  EXPECT_EQ(link->LinkColor(), plain);
  EXPECT_EQ(typed(), 0xFFFFFFu);
  link->LinkColor(0x00FFFF);
  EXPECT_TRUE(shown().contains(0x00FFFF)) << "a colour that can be read stays";
  for (const UINT change : {WM_SYSCOLORCHANGE, WM_THEMECHANGED}) {
    const HWND windows[] = {link.window(), browse.window(), ::GetWindow(browse.window(), GW_CHILD)};
    for (const HWND window : windows) ::UpdateWindow(window);
    EXPECT_FALSE(::GetUpdateRect(windows[2], nullptr, FALSE));
    for (const HWND window : {windows[0], windows[1]}) ::SendMessageA(window, change, 0, 0);
    for (const HWND window : windows) EXPECT_TRUE(::GetUpdateRect(window, nullptr, FALSE)) << change;
  }
  EXPECT_NEAR(contrast(0, 0xFFFFFF), 21, 1e-9);
  EXPECT_NEAR(contrast(0x777777, 0xFFFFFF), 4.478, 0.001);
}

}  // namespace
}  // namespace tornby::windows
