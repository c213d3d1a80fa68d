// The controls in real windows, under real pointer and keyboard input.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "controls/kelBrowseButton.h"
#include "controls/kelHyperLabel.h"
#include "controls/kelLabel.h"
#include "controls/windows/text_lines.h"
#include "controls/windows/window_host.h"
#include "platform/process.h"
#include "support/holdings.h"

#include <oleacc.h>

namespace tornby::windows {
namespace {

void pump() {
  MSG message;
  while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
  }
}

class Form {
 public:
  explicit Form(const char* kind = "STATIC")
      : window_(::CreateWindowExA(WS_EX_TOPMOST, kind, "form", WS_POPUP | WS_VISIBLE, 50, 50, 400, 300, nullptr,
                                  nullptr, nullptr, nullptr)) {
    ::SetForegroundWindow(window_);
    pump();
  }
  ~Form() {
    ::DestroyWindow(window_);
    pump();
  }
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  operator HWND() const { return window_; }

 private:
  HWND window_;
};

/// Moves the pointer to a place in a window's client area.
void move_to(HWND window, int x, int y) {
  POINT at = {x, y};
  ::ClientToScreen(window, &at);
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  const auto scaled = [](int position, int extent) { return (position * 65536 + extent - 1) / extent; };
  input.mi.dx = scaled(at.x, ::GetSystemMetrics(SM_CXSCREEN));
  input.mi.dy = scaled(at.y, ::GetSystemMetrics(SM_CYSCREEN));
  ::SendInput(1, &input, sizeof input);
  pump();
}

void mouse(DWORD flags) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  ::SendInput(1, &input, sizeof input);
  pump();
}

void click() {
  mouse(MOUSEEVENTF_LEFTDOWN);
  mouse(MOUSEEVENTF_LEFTUP);
}

void press_key(WORD code) {
  for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.dwFlags = flags;
    ::SendInput(1, &input, sizeof input);
    pump();
  }
}

SIZE client_size(HWND window) {
  RECT client{};
  ::GetClientRect(window, &client);
  return {client.right, client.bottom};
}

/// The colours of a window's client area that differ from its top left pixel, counted.
int marked_pixels(HWND window) {
  ::UpdateWindow(window);
  const HDC context = ::GetDC(window);
  const SIZE size = client_size(window);
  const COLORREF ground = ::GetPixel(context, size.cx / 2, 2);
  int marked = 0;
  for (int y = 0; y < size.cy; ++y) {
    for (int x = 0; x < size.cx; ++x) marked += ::GetPixel(context, x, y) != ground;
  }
  ::ReleaseDC(window, context);
  return marked;
}

TEST(LabelWindow, BorderLinesTakeTheirPlaceAndReplaceTheFrame) {
  const Form form;
  ControlWindow<kelLabel> label(form, {10, 10, 210, 110});
  label->Caption(u"");
  label->AutoSize(false);
  label.host().place({10, 10, 210, 110});
  EXPECT_GT(marked_pixels(label.window()), 200);  // every second pixel round the area
  label->UseBorderLines(true);
  EXPECT_EQ(client_size(label.window()).cx, 198);
  EXPECT_EQ(marked_pixels(label.window()), 0);
  label->UseBorderLines(false);
  EXPECT_EQ(client_size(label.window()).cx, 200);
  EXPECT_GT(marked_pixels(label.window()), 200);
}

struct LinkWindow {
  Form form{"#32770"};  // a dialog
  ControlWindow<kelHyperLabel> link{form, {10, 10, 210, 40}};
  std::string log;

  LinkWindow() {
    link->Caption(u"A link");
    link->Click = [this] { log += "Click "; };
    link->MouseUp = [this](std::int16_t& button) { log += "MouseUp" + std::to_string(button) + " "; };
    move_to(form, 300, 200);
  }
};

TEST(HyperLabelWindow, HoverCapturesUntilThePointerLeaves) {
  LinkWindow test;
  const Color plain = test.link->LinkColor();
  move_to(test.link.window(), 3, 3);
  EXPECT_EQ(::GetCapture(), test.link.window());
  EXPECT_EQ(test.link->LinkColor(), test.link->HoverColor());
  EXPECT_EQ(::GetCursor(), ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32649)));
  click();
  EXPECT_EQ(test.log, "Click MouseUp1 ");
  move_to(test.link.window(), -5, 3);
  EXPECT_EQ(::GetCapture(), nullptr);
  EXPECT_EQ(test.link->LinkColor(), plain);
}

TEST(HyperLabelWindow, CaptureTakenByAnotherWindowEndsTheHover) {
  LinkWindow test;
  const Color plain = test.link->LinkColor();
  move_to(test.link.window(), 3, 3);
  mouse(MOUSEEVENTF_LEFTDOWN);
  ::SetCapture(test.form);
  EXPECT_EQ(test.link->LinkColor(), plain);
  ::ReleaseCapture();
  mouse(MOUSEEVENTF_LEFTUP);
  EXPECT_EQ(test.log, "MouseUp1 ");
}

// A dialog moves the keyboard by the mnemonics that it finds in its windows' texts.
TEST(HyperLabelWindow, MnemonicsWorkInADialog) {
  LinkWindow test;
  ControlWindow<kelLabel> label(test.form, {10, 50, 210, 70});
  ControlWindow<kelBrowseButton> browse(test.form, {10, 80, 210, 104});
  test.link->Caption(u"A && B &link \u0416");
  label->Caption(u"&File");
  wchar_t text[40];
  EXPECT_EQ(::GetWindowTextW(test.link.window(), text, 40), 14);
  EXPECT_STREQ(text, L"A && B &link \u0416");
  EXPECT_EQ(::GetWindowTextW(test.link.window(), text, 4), 3);
  EXPECT_STREQ(text, L"A &");
  const auto type = [&](wchar_t letter) {
    MSG message{test.form, WM_SYSCHAR, letter, 1 << 29, 0, {}};
    ::IsDialogMessageW(test.form, &message);
  };
  type(L'f');
  EXPECT_EQ(::GetFocus(), ::GetWindow(browse.window(), GW_CHILD));
  type(L'l');
  EXPECT_EQ(test.log, "Click ");
}

TEST(HyperLabelWindow, HasAnAccessibleNameRoleAndAction) {
  ::CoInitialize(nullptr);
  {
    LinkWindow test;
    void* found = nullptr;
    ASSERT_EQ(::AccessibleObjectFromWindow(test.link.window(), OBJID_CLIENT, __uuidof(IAccessible), &found), S_OK);
    auto* accessible = static_cast<IAccessible*>(found);
    VARIANT self{};
    self.vt = VT_I4;
    BSTR name = nullptr;
    EXPECT_EQ(accessible->get_accName(self, &name), S_OK);
    EXPECT_STREQ(name, L"A link");
    ::SysFreeString(name);
    VARIANT role{};
    EXPECT_EQ(accessible->get_accRole(self, &role), S_OK);
    EXPECT_EQ(role.lVal, ROLE_SYSTEM_LINK);
    EXPECT_EQ(accessible->accDoDefaultAction(self), S_OK);
    EXPECT_EQ(test.log, "Click ");
    accessible->Release();
  }
  ::CoUninitialize();
}

/// The characters of ASCII; others as question marks.
std::string plain(StringView text) {
  std::string result;
  for (const char16_t unit : text) result += unit < 0x80 ? static_cast<char>(unit) : '?';
  return result;
}

struct BrowseWindow {
  Form form;
  ControlWindow<kelBrowseButton> browse{form, {10, 10, 210, 34}};
  std::string log;

  BrowseWindow() {
    browse->ControlClick = [this] { log += "ControlClick "; };
    browse->OpenBrowse = [this] { log += "OpenBrowse "; };
    browse->MouseUp = [this](std::int16_t&) { log += "MouseUp "; };
    browse->ChangeText = [this](String& text) { log += "Change:" + plain(text) + " "; };
    browse->KeyPress = [this](std::int16_t& code) {
      if (code == '!') code = '?';
      if (code == '-') code = 0;
    };
    move_to(form, 300, 200);
  }
  HWND edit() const { return ::GetWindow(browse.window(), GW_CHILD); }
  int button_x() { return client_size(browse.window()).cx - 5; }
};

TEST(BrowseWindow, ClickOnTheButton) {
  BrowseWindow test;
  move_to(test.browse.window(), test.button_x(), 8);
  EXPECT_EQ(::GetCapture(), test.browse.window());
  click();
  EXPECT_EQ(test.log, "ControlClick OpenBrowse MouseUp ");
  move_to(test.browse.window(), 20, 8);
  EXPECT_EQ(::GetCapture(), nullptr);
}

TEST(BrowseWindow, TypingChangesTheText) {
  BrowseWindow test;
  ::SetFocus(test.browse.window());
  EXPECT_EQ(::GetFocus(), test.edit());
  press_key('A');
  EXPECT_EQ(test.log, "Change:a ");
  EXPECT_EQ(test.browse->Text(), u"a");
  press_key(VK_RETURN);
  EXPECT_EQ(test.log, "Change:a Change:a ");
  test.log.clear();
  for (const wchar_t character : L"!-\u0416") {
    if (character) ::SendMessageW(test.edit(), WM_CHAR, character, 0);
  }
  EXPECT_EQ(test.browse->Text(), u"a?\u0416") << "what has no code comes through, unless a handler changes it";
  press_key(VK_F4);
  EXPECT_EQ(test.log, "Change:a? Change:a?? ControlClick OpenBrowse ");
}

TEST(BrowseWindow, FieldFollowsTheProperties) {
  BrowseWindow test;
  test.browse->Text(u"caf\u00e9");
  test.browse->Text(u"caf\u00e9 \u0416");
  wchar_t text[20];
  ::GetWindowTextW(test.edit(), text, 20);
  EXPECT_STREQ(text, L"caf\u00e9 \u0416");
  EXPECT_EQ(test.log, "Change:caf? Change:caf? ? ");
  test.browse->Locked(true);
  test.browse->setOver();
  pump();
  EXPECT_FALSE(::IsWindowEnabled(test.edit())) << "the control's own drawing is no painting by the system";
  EXPECT_TRUE(::GetWindowLongA(test.edit(), GWL_STYLE) & ES_READONLY);
  ::InvalidateRect(test.browse.window(), nullptr, FALSE);
  pump();
  EXPECT_TRUE(::IsWindowEnabled(test.edit()));
  test.browse->MaxLength(3);
  EXPECT_EQ(::SendMessageA(test.edit(), EM_GETLIMITTEXT, 0, 0), 3);
  test.browse->BorderApperance(0);
  EXPECT_EQ(client_size(test.browse.window()).cx, 200);

  const auto color_at = [&](int x, int y) {
    ::InvalidateRect(test.browse.window(), nullptr, FALSE);
    ::UpdateWindow(test.browse.window());
    const HDC context = ::GetDC(test.browse.window());
    const COLORREF color = ::GetPixel(context, x, y);
    ::ReleaseDC(test.browse.window(), context);
    return color;
  };
  test.browse->BackColor(0x123456);
  test.browse->setOut();
  EXPECT_NE(color_at(test.button_x(), 0), 0x123456u) << "the button's edge";
  test.browse->Style(1);
  EXPECT_EQ(color_at(test.button_x(), 0), 0x123456u) << "which has moved";
}

TEST(BrowseWindow, HearsOfUnusualInputAndADisabledOneOpensForNobody) {
  BrowseWindow test;
  test.browse->KeyUp = [&](std::int16_t& code, std::int16_t&) { test.log += "Up" + std::to_string(code) + " "; };
  for (const WPARAM key : {WPARAM{'X'}, WPARAM{VK_F10}}) ::SendMessageA(test.edit(), WM_SYSKEYUP, key, 1 << 29);
  EXPECT_EQ(test.log, "Up88 Up121 ");
  test.browse->InfoClick = [&] { test.log += "InfoClick "; };
  for (const UINT press : {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK}) ::SendMessageA(test.edit(), press, MK_RBUTTON, 0);
  test.browse->Enabled(false);
  ::SendMessageA(test.browse.window(), BM_CLICK, 0, 0);
  EXPECT_EQ(test.log, "Up88 Up121 InfoClick InfoClick ");
}

// A handler that lets go of the control, by its owner or by its form, in the middle of it all.
TEST(ControlWindow, MayBeDestroyedInItsOwnEvents) {
  for (const bool with_form : {false, true}) {
    auto form = std::make_unique<Form>();
    auto link = std::make_unique<ControlWindow<kelHyperLabel>>(*form, RECT{10, 10, 210, 40});
    auto browse = std::make_unique<ControlWindow<kelBrowseButton>>(*form, RECT{10, 60, 210, 84});
    const auto end = [&](auto& control) {
      if (with_form) {
        form = nullptr;
      } else {
        control = nullptr;
      }
    };
    int browsed = 0;
    int clicked = 0;
    (*browse)->OpenBrowse = [&] { ++browsed, end(browse); };
    (*link)->Click = [&] { ++clicked, end(link); };
    if (!with_form) {
      move_to(link->window(), 3, 3);
      click();
      EXPECT_EQ(clicked, 1);
    }
    move_to(browse->window(), client_size(browse->window()).cx - 5, 8);
    click();
    EXPECT_EQ(browsed, 1);
    if (form) {
      ::SetFocus(form->operator HWND());
    }
    pump();
  }
  const Form form;
  auto browse = std::make_unique<ControlWindow<kelBrowseButton>>(form, RECT{10, 60, 210, 84});
  (*browse)->ChangeText = [&](String&) { browse = nullptr; };
  ::SendMessageA(::GetWindow(browse->window(), GW_CHILD), WM_CHAR, 'x', 0);
  EXPECT_EQ(browse, nullptr);
}

TEST(ControlWindow, HandsExceptionsOfHandlersToItsSite) {
  struct Site final : ControlSite {
    std::string log;
    void failed(std::exception_ptr exception) override {
      try {
        std::rethrow_exception(exception);
      } catch (const std::exception& error) {
        log += error.what();
      }
    }
  };
  const Form form;
  const auto site = std::make_shared<Site>();
  ControlWindow<kelBrowseButton> browse(form, {10, 60, 210, 84}, site);
  browse->InfoClick = [] { throw std::runtime_error("on the surface "); };
  browse->KeyPress = [](std::int16_t&) { throw std::runtime_error("in the field"); };
  ::SendMessageA(browse.window(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(1, 1));
  ::SendMessageA(::GetWindow(browse.window(), GW_CHILD), WM_CHAR, 'x', 0);
  EXPECT_EQ(site->log, "on the surface in the field");
}

TEST(WindowHost, KeepsTheLastErrorOfTheSystem) {
  const Form form;
  ControlWindow<kelLabel> label(form, {10, 10, 210, 110});
  ::UpdateWindow(label.window());
  EXPECT_EQ(label.host().last_error(), 0u);
  label.host().draw(reinterpret_cast<HDC>(0x1234), {0, 0, 10, 10});  // no device context
  EXPECT_NE(label.host().last_error(), 0u);
  EXPECT_GT(label.host().control_as<kelLabel>().accessible_name().size(), 0u);
  label->Caption(u"laid out once more");
  EXPECT_NE(label.host().last_error(), 0u) << "sizes are read without a trace";
  ::UpdateWindow(label.window());
  EXPECT_EQ(label.host().last_error(), 0u);
}

// What is drawn on other devices breaks where the window's text breaks.
TEST(TextLines, AreThoseOfTheSystem) {
  const ScreenContext screen;
  const GdiObject<HFONT> font = make_font(Font(), 96);
  const Selection selection(screen, font.get());
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(screen, &metrics);
  for (const StringView text : {u"one", u"two words", u"a word that is too-long-for-its-line here", u"&marked && not",
                                u"lines\r\nby\nhand", u"trailing  blanks "}) {
    for (const int width : {47, 90, 300}) {
      RECT needed = {0, 0, width, 0};
      draw_text(screen, String(text), needed, DT_WORDBREAK | DT_CALCRECT);
      const auto lines = text_lines(font.get(), String(text), width, DT_WORDBREAK);
      EXPECT_EQ(static_cast<int>(lines.size()) * metrics.tmHeight, needed.bottom) << plain(text) << ' ' << width;
      if (width == 300 && lines.size() == 1) {
        EXPECT_EQ(lines[0].width(), needed.right) << plain(text);
      }
    }
  }
}

/// By messages, which is faster than real input.
void hover_and_click(HWND window, int x, int y) {
  const LPARAM at = MAKELPARAM(x, y);
  ::SendMessageA(window, WM_MOUSEMOVE, 0, at);
  ::SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
  ::SendMessageA(window, WM_LBUTTONUP, 0, at);
}

TEST(ControlWindow, LeavesNothingBehind) {
  const Form form;
  tornby::testing::expect_nothing_left_behind([&] {
    ControlWindow<kelLabel> label(form, {0, 0, 100, 30});
    ControlWindow<kelHyperLabel> link(form, {0, 40, 100, 60});
    ControlWindow<kelBrowseButton> browse(form, {0, 80, 100, 104});
    label->Font({.size = 12});
    pump();
    hover_and_click(link.window(), 3, 3);
    hover_and_click(browse.window(), client_size(browse.window()).cx - 5, 8);
  });
  const auto before = tornby::testing::Holdings::now();
  const GdiObject<HBRUSH> one_more(::CreateSolidBrush(1));
  const Form another;
  ACCEL key = {};
  const HACCEL table = ::CreateAcceleratorTableW(&key, 1);
  const auto after = tornby::testing::Holdings::now();
  ::DestroyAcceleratorTable(table);
  EXPECT_EQ(after.windows, before.windows + 1);
  EXPECT_GE(after.user_objects, before.user_objects + 2);
  EXPECT_EQ(after.drawing_objects, before.drawing_objects + (native_process().is_wow64() ? 0 : 1));
}

}  // namespace
}  // namespace tornby::windows
