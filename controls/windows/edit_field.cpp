#include "controls/windows/edit_field.h"

#include <algorithm>
#include <string>

#include "base/runtime_error.h"
#include "controls/windows/canvas.h"
#include "controls/windows/input.h"
#include "controls/windows/window_host.h"

namespace tornby::windows {

WindowEdit::WindowEdit(WindowHost& host) : WindowElement(host), font_handle_(make_font(font_, host.dots_per_inch())) {
  host_->set_edit(this);
}

WindowEdit::~WindowEdit() {
  host_->set_edit(nullptr);
  if (window_) ::DestroyWindow(std::exchange(window_, nullptr));
}

void WindowEdit::create_window(HWND parent) {
  const RECT place = area();
  const bool right_to_left = host_->right_to_left();
  const DWORD style = WS_CHILD | WS_TABSTOP | ES_AUTOHSCROLL | (visible_ ? WS_VISIBLE : 0) |
                      (enabled_ ? 0 : WS_DISABLED) | (right_to_left ? ES_RIGHT : 0);
  const HWND made =
      ::CreateWindowExW(right_to_left ? WS_EX_RTLREADING : 0, L"EDIT", wide(text_), style, place.left, place.top,
                        place.right - place.left, place.bottom - place.top, parent, nullptr, own_module(), nullptr);
  if (!made) throw RuntimeError(StandardError::automation_error);
  window_ = made;
  right_to_left_ = right_to_left;
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  original_ = reinterpret_cast<WNDPROC>(
      ::SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowEdit::procedure)));
  ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font_handle_.get()), FALSE);
  ::SendMessageW(window_, EM_SETREADONLY, locked_, 0);
  ::SendMessageW(window_, EM_SETLIMITTEXT, static_cast<WPARAM>(max_length_), 0);
}

void WindowEdit::height(double value) {
  WindowElement::height(std::max(value, static_cast<double>(text_metrics(font_handle_.get()).tmHeight)));
}

void WindowEdit::text(StringView value) {
  if (text_ == value) return;
  String next(value);
  if (window_) {
    setting_text_ = true;
    const bool taken = ::SetWindowTextW(window_, wide(next)) != FALSE;
    setting_text_ = false;
    if (!taken) throw RuntimeError(StandardError::out_of_memory);
  }
  text_ = std::move(next);
  show_change();
  host_->text_changed();
}

bool WindowEdit::take_text() {
  if (setting_text_ || !window_) return false;
  String now(static_cast<std::size_t>(::GetWindowTextLengthW(window_)) + 1, u'\0');
  now.resize(static_cast<std::size_t>(
      ::GetWindowTextW(window_, reinterpret_cast<wchar_t*>(now.data()), static_cast<int>(now.size()))));
  if (now == text_) return false;
  text_ = std::move(now);
  return true;
}

void WindowEdit::font(const Font& value) {
  if (font_ == value) return;
  Font before = std::exchange(font_, value);
  try {
    dots_per_inch_changed();
  } catch (...) {
    font_ = std::move(before);
    throw;
  }
}

void WindowEdit::dots_per_inch_changed() {
  GdiObject<HFONT> made = make_font(font_, host_->dots_per_inch());
  if (window_) ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), TRUE);
  font_handle_ = std::move(made);
  show_change();
}

void WindowEdit::direction_changed() {
  if (!window_ || right_to_left_ == host_->right_to_left()) return;
  const HWND before = window_;
  DWORD start = 0, end = 0;
  ::SendMessageW(before, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  create_window(::GetParent(before));
  ::SendMessageW(window_, EM_SETSEL, start, static_cast<LPARAM>(end));
  if (::GetFocus() == before) ::SetFocus(window_);
  ::DestroyWindow(before);
}

void WindowEdit::back_color(Color value) {
  set(back_color_, value);
  if (window_) ::InvalidateRect(window_, nullptr, TRUE);
}

void WindowEdit::enabled(bool value) {
  if (enabled_ == value) return;
  enabled_ = value;
  if (window_) ::EnableWindow(window_, value);
}

void WindowEdit::locked(bool value) {
  locked_ = value;
  if (window_) ::SendMessageW(window_, EM_SETREADONLY, value, 0);
}

void WindowEdit::max_length(std::int32_t value) {
  max_length_ = value;
  if (window_) ::SendMessageW(window_, EM_SETLIMITTEXT, static_cast<WPARAM>(value), 0);
}

void WindowEdit::show_change() {
  if (window_) {
    const RECT place = area();
    ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   SWP_NOZORDER | SWP_NOACTIVATE | static_cast<UINT>(visible_ ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  }
  WindowElement::show_change();
}

COLORREF WindowEdit::text_color() const {
  return enabled_ ? legible(::GetSysColor(COLOR_WINDOWTEXT), resolved(back_color_), COLOR_WINDOWTEXT)
                  : ::GetSysColor(COLOR_GRAYTEXT);
}

HBRUSH WindowEdit::colour(HDC context) {
  ::SetBkColor(context, resolved(back_color_));
  ::SetTextColor(context, text_color());
  brush_ = GdiObject<HBRUSH>(::CreateSolidBrush(resolved(back_color_)));
  return brush_.get();
}

void WindowEdit::draw(const Canvas& canvas) const {
  if (!visible_) return;
  canvas.fill(area(), resolved(back_color_));
  const UINT direction = host_->right_to_left() ? DT_RTLREADING | DT_RIGHT : 0;
  canvas.text(text_, area(), DT_SINGLELINE | DT_NOPREFIX | direction, font_, host_->dots_per_inch(), font_handle_.get(),
              text_color());
}

LRESULT CALLBACK WindowEdit::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* edit = reinterpret_cast<WindowEdit*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  const auto host = edit->host_->weak_from_this().lock();
  const WNDPROC original = edit->original_;
  if (!host || edit->window_ != window) return ::CallWindowProcW(original, window, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    edit->forget_window();
    return ::CallWindowProcW(original, window, message, wparam, lparam);
  }
  return host->guarded([&] { return edit->handle(message, wparam, lparam); });
}

LRESULT WindowEdit::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  const HWND window = window_;
  if (is_input(message) && host_->in_design()) return message == WM_NCHITTEST ? HTTRANSPARENT : 0;
  Control& control = host_->control();
  auto key = static_cast<std::int16_t>(wparam);
  switch (message) {
    case WM_CHAR: {
      const std::int16_t typed = code_of(static_cast<char16_t>(wparam));
      key = typed;
      control.key_press(Part::edit, key);
      if (key == 0 || key == key::enter) return 0;  // Enter would only beep
      if (key != typed) wparam = character_of(key);
      break;
    }
    case WM_GETDLGCODE: {
      const auto* key_message = reinterpret_cast<const MSG*>(lparam);
      if (key_message && key_message->wParam == VK_RETURN) return DLGC_WANTMESSAGE | DLGC_WANTCHARS;
      break;
    }
    case WM_SETFOCUS:
      host_->focus_arrives(reinterpret_cast<HWND>(wparam));
      break;
    case WM_KILLFOCUS:
      host_->focus_leaves(reinterpret_cast<HWND>(wparam));
      break;
    default:
      if (pass_button(control, message, Part::edit, pointer_of(lparam))) break;
      if (pass_key(control, message, Part::edit, key) && key == 0) return 0;
      break;
  }
  if (!::IsWindow(window)) return 0;
  return ::CallWindowProcW(original_, window, message, wparam, lparam);
}

std::int32_t WindowDropDown::button_width() const {
  const HWND combo = ::CreateWindowExA(0, "COMBOBOX", "", WS_CHILD | CBS_DROPDOWN, 0, 0, 100, 100, HWND_MESSAGE,
                                       nullptr, own_module(), nullptr);
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  const bool known = combo && ::GetComboBoxInfo(combo, &info);
  if (combo) ::DestroyWindow(combo);
  return known ? info.rcButton.right - info.rcButton.left : ::GetSystemMetrics(SM_CXVSCROLL);
}

}  // namespace tornby::windows
