#include "controls/windows/elements.h"

#include <algorithm>
#include <cmath>

#include "controls/windows/window_host.h"

namespace tornby::windows {

template <class Base>
RECT WindowElement<Base>::area() const {
  const auto left = static_cast<LONG>(std::lround(left_));
  const auto top = static_cast<LONG>(std::lround(top_));
  return {left, top, left + static_cast<LONG>(std::lround(width_)), top + static_cast<LONG>(std::lround(height_))};
}

template <class Base>
void WindowElement<Base>::show_change() {
  host_->redraw();
}

template class WindowElement<LabelElement>;
template class WindowElement<PictureElement>;
template class WindowElement<EditElement>;

WindowLabel::WindowLabel(WindowHost& host) : WindowElement(host), font_handle_(make_font(font_, host.dots_per_inch())) {
  host_->add(*this);
}

WindowLabel::~WindowLabel() {
  host_->remove(*this);
}

void WindowLabel::width(double value) {
  WindowElement::width(value);
  fit();
}

void WindowLabel::caption(StringView value) {
  if (caption_ == value) return;
  caption_ = value;
  show_change();
  fit();
  host_->caption_changed();
}

void WindowLabel::font(const Font& value) {
  font_handle_ = make_font(value, host_->dots_per_inch());
  set(font_, value);
  fit();
}

void WindowLabel::auto_size(bool value) {
  set(auto_size_, value);
  fit();
}

void WindowLabel::word_wrap(bool value) {
  set(word_wrap_, value);
  fit();
}

void WindowLabel::dots_per_inch_changed() {
  font_handle_ = make_font(font_, host_->dots_per_inch());
  fit();
}

UINT WindowLabel::format() const {
  const UINT aligned = alignment_ == 1 ? DT_RIGHT : alignment_ == 2 ? DT_CENTER : DT_LEFT;
  return aligned | (word_wrap_ || !auto_size_ ? DT_WORDBREAK : 0);
}

void WindowLabel::fit() {
  if (!auto_size_) return;
  const ScreenContext screen;
  const Selection font(screen, font_handle_.get());
  RECT needed = {0, 0, word_wrap_ ? static_cast<LONG>(std::lround(width_)) : 0, 0};
  draw_text(screen, caption_.empty() ? String(u" ") : caption_, needed, format() | DT_CALCRECT);
  if (!word_wrap_) set(width_, static_cast<double>(caption_.empty() ? 0 : needed.right));
  set(height_, static_cast<double>(needed.bottom));
}

void WindowLabel::draw(HDC context) const {
  const Selection font(context, font_handle_.get());
  const int mode = ::SetBkMode(context, TRANSPARENT);
  const COLORREF color = ::SetTextColor(context, enabled_ ? resolved(fore_color_) : ::GetSysColor(COLOR_GRAYTEXT));
  RECT place = area();
  draw_text(context, caption_, place, format());
  ::SetTextColor(context, color);
  ::SetBkMode(context, mode);
}

WindowPicture::WindowPicture(WindowHost& host) : WindowElement(host) {
  host_->add(*this);
}

WindowPicture::~WindowPicture() {
  host_->remove(*this);
}

void WindowPicture::picture(const PicturePointer& value) {
  picture_ = value;
  width_ = value ? value->width() * host_->dots_per_inch() / 2540.0 : 0;
  height_ = value ? value->height() * host_->dots_per_inch() / 2540.0 : 0;
  show_change();
}

void WindowPicture::draw(HDC context) const {
  if (const auto* drawable = dynamic_cast<const DrawablePicture*>(picture_.get())) drawable->draw(context, area());
}

WindowEdit::WindowEdit(WindowHost& host) : WindowElement(host), font_handle_(make_font(font_, host.dots_per_inch())) {
  host_->set_edit(this);
}

WindowEdit::~WindowEdit() {
  host_->set_edit(nullptr);
  if (window_) ::DestroyWindow(std::exchange(window_, nullptr));
}

void WindowEdit::create_window(HWND parent) {
  const RECT place = area();
  const DWORD style =
      WS_CHILD | WS_TABSTOP | ES_AUTOHSCROLL | (visible_ ? WS_VISIBLE : 0) | (enabled_ ? 0 : WS_DISABLED);
  window_ = ::CreateWindowExW(0, L"EDIT", wide(text_), style, place.left, place.top, place.right - place.left,
                              place.bottom - place.top, parent, nullptr, own_module(), nullptr);
  if (!window_) return;
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  original_ = reinterpret_cast<WNDPROC>(
      ::SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowEdit::procedure)));
  ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font_handle_.get()), FALSE);
  ::SendMessageW(window_, EM_SETREADONLY, locked_, 0);
  ::SendMessageW(window_, EM_SETLIMITTEXT, static_cast<WPARAM>(max_length_), 0);
}

void WindowEdit::height(double value) {
  const ScreenContext screen;
  const Selection font(screen, font_handle_.get());
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(screen, &metrics);
  WindowElement::height(std::max(value, static_cast<double>(metrics.tmHeight)));
}

void WindowEdit::text(StringView value) {
  if (text_ == value) return;
  text_ = value;
  if (window_) {
    setting_text_ = true;
    ::SetWindowTextW(window_, wide(text_));
    setting_text_ = false;
  }
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
  font_ = value;
  dots_per_inch_changed();
}

void WindowEdit::dots_per_inch_changed() {
  GdiObject<HFONT> made = make_font(font_, host_->dots_per_inch());
  if (window_) ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), TRUE);
  font_handle_ = std::move(made);
  show_change();
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

HBRUSH WindowEdit::colour(HDC context) {
  ::SetBkColor(context, resolved(back_color_));
  ::SetTextColor(context, ::GetSysColor(enabled_ ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
  brush_ = GdiObject<HBRUSH>(::CreateSolidBrush(resolved(back_color_)));
  return brush_.get();
}

void WindowEdit::draw(HDC context) const {
  if (!visible_) return;
  RECT place = area();
  fill(context, place, back_color_);
  const Selection font(context, font_handle_.get());
  const int mode = ::SetBkMode(context, TRANSPARENT);
  const COLORREF color = ::SetTextColor(context, ::GetSysColor(enabled_ ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
  draw_text(context, text_, place, DT_SINGLELINE | DT_NOPREFIX);
  ::SetTextColor(context, color);
  ::SetBkMode(context, mode);
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
  Control& control = host_->control();
  const Pointer at{static_cast<double>(static_cast<short>(LOWORD(lparam))),
                   static_cast<double>(static_cast<short>(HIWORD(lparam)))};
  auto key = static_cast<std::int16_t>(wparam);
  std::int16_t shift = shift_state();
  switch (message) {
    case WM_LBUTTONDOWN:
      control.mouse_down(Part::edit, mouse_button::left, at);
      break;
    case WM_RBUTTONDOWN:
      control.mouse_down(Part::edit, mouse_button::right, at);
      break;
    case WM_MBUTTONDOWN:
      control.mouse_down(Part::edit, mouse_button::middle, at);
      break;
    case WM_LBUTTONUP:
      control.mouse_up(Part::edit, mouse_button::left, at);
      break;
    case WM_RBUTTONUP:
      control.mouse_up(Part::edit, mouse_button::right, at);
      break;
    case WM_MBUTTONUP:
      control.mouse_up(Part::edit, mouse_button::middle, at);
      break;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      control.key_down(Part::edit, key, shift);
      if (key == 0) return 0;
      break;
    case WM_KEYUP:
      control.key_up(Part::edit, key, shift);
      break;
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
