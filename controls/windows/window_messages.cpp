// The messages of a control's window: pointer, keyboard, focus, and what dialogs ask.
#include <algorithm>
#include <string>

#include "controls/windows/accessible.h"
#include "controls/windows/edit_field.h"
#include "controls/windows/input.h"
#include "controls/windows/window_host.h"

namespace tornby::windows {
namespace {

constexpr UINT dots_per_inch_changed_message = 0x02E3;  // WM_DPICHANGED_AFTERPARENT, of later systems

void set_hand() {
  ::SetCursor(::LoadCursorA(nullptr, MAKEINTRESOURCEA(32649)));
}

}  // namespace

LRESULT CALLBACK WindowHost::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* made = static_cast<WindowHost*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
  }
  auto* known = reinterpret_cast<WindowHost*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  // The reference holds the control while it works, whatever the form does in an event.
  const std::shared_ptr<WindowHost> host = known ? known->weak_from_this().lock() : nullptr;
  if (!host) return ::DefWindowProcW(window, message, wparam, lparam);
  const auto handle = [&] { return host->handle(window, message, wparam, lparam); };
  return host->guarded([&] { return host->site_->filter(window, message, wparam, lparam, std::ref(handle)); });
}

LRESULT WindowHost::handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (is_input(message) && in_design()) {
    return message == WM_NCHITTEST ? HTTRANSPARENT : ::DefWindowProcW(window, message, wparam, lparam);
  }
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint_window(window);
      return 0;
    case WM_SIZE:
      if (window_) size_changed(window_size());
      return 0;
    case WM_LBUTTONDOWN:
      if (control_->takes_focus()) ::SetFocus(window);
      [[fallthrough]];
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
    case WM_MOUSEMOVE:
      handle_pointer(message, wparam, lparam);
      return 0;
    case WM_CAPTURECHANGED:
      if (captured_ && reinterpret_cast<HWND>(lparam) != window) {
        captured_ = false;
        control_->capture_lost();
      }
      return 0;
    case WM_SETCURSOR:
      if (LOWORD(lparam) != HTCLIENT || !hand_) break;
      set_hand();
      return TRUE;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYUP: {
      auto code = static_cast<std::int16_t>(wparam);
      if (pass_key(*control_, message, Part::surface, code) && code == 0) return 0;
      break;
    }
    case WM_GETDLGCODE:
      return dialog_code(reinterpret_cast<const MSG*>(lparam));
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(control_->accessible_name().size());
    case WM_GETTEXT:
      return copy_name(reinterpret_cast<wchar_t*>(lparam), wparam);
    case BM_CLICK:
      control_->activate();
      return 0;
    case WM_SETFOCUS:
      focus_arrives(reinterpret_cast<HWND>(wparam));
      if (edit_ && edit_->enabled() && edit_->window()) ::SetFocus(edit_->window());
      return 0;
    case WM_KILLFOCUS:
      focus_leaves(reinterpret_cast<HWND>(wparam));
      return 0;
    case WM_COMMAND:
      if (edit_ && reinterpret_cast<HWND>(lparam) == edit_->window() && HIWORD(wparam) == EN_CHANGE) {
        if (edit_->take_text()) control_->text_changed();
        return 0;
      }
      break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
      if (edit_ && reinterpret_cast<HWND>(lparam) == edit_->window()) {
        return reinterpret_cast<LRESULT>(edit_->colour(reinterpret_cast<HDC>(wparam)));
      }
      break;
    case WM_GETOBJECT:
      if (static_cast<LONG>(lparam) != OBJID_CLIENT || !window_) break;
      return answer_accessible_request(shared_from_this(), wparam);
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
      redraw();
      break;
    case dots_per_inch_changed_message:
      update_dots_per_inch();
      lay_out();
      return 0;
    case WM_NCDESTROY:
      ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      if (edit_) edit_->forget_window();
      window_ = nullptr;
      if (std::exchange(captured_, false)) control_->capture_lost();
      break;
    default:
      break;
  }
  return ::DefWindowProcW(window, message, wparam, lparam);
}

void WindowHost::handle_pointer(UINT message, WPARAM wparam, LPARAM lparam) {
  Pointer at = pointer_of(lparam);
  Part part = Part::surface;
  for (auto element = drawn_.rbegin(); element != drawn_.rend(); ++element) {
    const RECT area = (*element)->drawn_area();
    const POINT point = {static_cast<LONG>(at.x), static_cast<LONG>(at.y)};
    if (!(*element)->shows() || !::PtInRect(&area, point)) continue;
    part = (*element)->part();
    at = {at.x - area.left, at.y - area.top};
    break;
  }
  if (pass_button(*control_, message, part, at)) return;
  if (!captured_) hand_ = false;
  control_->mouse_move(part, held_buttons(wparam), at);
}

void WindowHost::set_capture() {
  if (!window_) return;
  captured_ = true;
  last_error_.of([&] { ::SetCapture(window_); });
}

void WindowHost::release_capture() {
  captured_ = false;
  if (window_ && ::GetCapture() == window_) last_error_.of([] { ::ReleaseCapture(); });
}

void WindowHost::show_hand() {
  hand_ = true;
  last_error_.of(&set_hand);
}

bool WindowHost::is_within(HWND other) const {
  return window_ && other && (other == window_ || ::IsChild(window_, other));
}

void WindowHost::focus_arrives(HWND from) {
  redraw();
  if (is_within(from)) return;
  control_->got_focus();
  site_->focus_changed(true);
}

void WindowHost::focus_leaves(HWND to) {
  redraw();
  if (is_within(to)) return;
  control_->lost_focus();
  site_->focus_changed(false);
}

/// What a dialog may do with the keyboard while the control has it, and with the control's mnemonic.
LRESULT WindowHost::dialog_code(const MSG* key) const {
  if (!control_->takes_focus()) return edit_ ? 0 : DLGC_STATIC;
  const bool clicks = key && (key->wParam == VK_RETURN || key->wParam == VK_SPACE);
  return DLGC_BUTTON | (clicks ? DLGC_WANTMESSAGE : 0);
}

bool WindowHost::wants_key(MSG& message) const {
  if ((message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) || !is_within(message.hwnd)) return false;
  const LRESULT wanted =
      ::SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
  switch (message.wParam) {
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
      return (wanted & (DLGC_WANTARROWS | DLGC_WANTALLKEYS)) != 0;
    case VK_HOME:
    case VK_END:
    case VK_BACK:
    case VK_DELETE:
      return (wanted & (DLGC_HASSETSEL | DLGC_WANTALLKEYS)) != 0;
    default:
      return (wanted & DLGC_WANTALLKEYS) != 0;
  }
}

LRESULT WindowHost::copy_name(wchar_t* target, std::size_t capacity) const {
  if (capacity == 0) return 0;
  const String name = control_->accessible_name();
  const std::size_t length = std::min(name.size(), capacity - 1);
  std::copy_n(name.begin(), length, target);
  target[length] = L'\0';
  return static_cast<LRESULT>(length);
}

}  // namespace tornby::windows
