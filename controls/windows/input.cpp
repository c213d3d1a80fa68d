#include "controls/windows/input.h"

#include "platform/code_page.h"

namespace tornby::windows {

Pointer pointer_of(LPARAM lparam) {
  return {static_cast<double>(static_cast<short>(LOWORD(lparam))),
          static_cast<double>(static_cast<short>(HIWORD(lparam)))};
}

std::int16_t held_buttons(WPARAM wparam) {
  return static_cast<std::int16_t>((wparam & MK_LBUTTON ? mouse_button::left : 0) |
                                   (wparam & MK_RBUTTON ? mouse_button::right : 0) |
                                   (wparam & MK_MBUTTON ? mouse_button::middle : 0));
}

bool is_input(UINT message) {
  return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         message == WM_NCHITTEST || message == BM_CLICK;
}

bool pass_button(Control& control, UINT message, Part part, Pointer at) {
  struct Button {
    UINT down, down_again, up;  // the second within double-click time, to a window that asks for double clicks
    std::int16_t number;
  };
  constexpr Button buttons[] = {{WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_LBUTTONUP, mouse_button::left},
                                {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK, WM_RBUTTONUP, mouse_button::right},
                                {WM_MBUTTONDOWN, WM_MBUTTONDBLCLK, WM_MBUTTONUP, mouse_button::middle}};
  for (const Button& button : buttons) {
    const bool down = message == button.down || message == button.down_again;
    if (down) control.mouse_down(part, button.number, at);
    if (message == button.up) control.mouse_up(part, button.number, at);
    if (down || message == button.up) return true;
  }
  return false;
}

bool pass_key(Control& control, UINT message, Part part, std::int16_t& key_code) {
  std::int16_t shift = shift_state();
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      control.key_down(part, key_code, shift);
      return true;
    case WM_KEYUP:
    case WM_SYSKEYUP:
      control.key_up(part, key_code, shift);
      return true;
    default:
      return false;
  }
}

std::int16_t shift_state() {
  const auto held = [](int code, std::int16_t bit) { return ::GetKeyState(code) < 0 ? bit : std::int16_t{0}; };
  return static_cast<std::int16_t>(held(VK_SHIFT, key::shift) | held(VK_CONTROL, key::control) |
                                   held(VK_MENU, key::alt));
}

std::int16_t code_of(char16_t character) {
  return static_cast<std::int16_t>(native_code_page().code_of(character));
}

char16_t character_of(std::int16_t code) {
  const auto high = static_cast<std::uint8_t>(code >> 8);
  const auto low = static_cast<std::uint8_t>(code);
  const Bytes bytes = high ? Bytes{high, low} : Bytes{low};
  const String text = native_code_page().decode(bytes);
  return text.empty() ? u'\0' : text[0];
}

}  // namespace tornby::windows
