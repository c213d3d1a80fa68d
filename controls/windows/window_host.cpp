#include "controls/windows/window_host.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/runtime_error.h"
#include "controls/windows/accessible.h"

namespace tornby::windows {
namespace {

constexpr wchar_t class_name[] = L"TornbyControl";
constexpr UINT dots_per_inch_changed_message = 0x02E3;  // WM_DPICHANGED_AFTERPARENT, of later systems

class ContainedWindow final : public ContainedElement {
 public:
  ContainedWindow(HWND window, double twips_per_pixel) : window_(window), twips_per_pixel_(twips_per_pixel) {}
  void move(double left, double top, double width, double height) override {
    const auto pixels = [this](double twips) { return static_cast<int>(std::lround(twips / twips_per_pixel_)); };
    ::SetWindowPos(window_, nullptr, pixels(left), pixels(top), pixels(width), pixels(height),
                   SWP_NOZORDER | SWP_NOACTIVATE);
  }

 private:
  HWND window_;
  double twips_per_pixel_;
};

Pointer pointer_of(LPARAM lparam) {
  return {static_cast<double>(static_cast<short>(LOWORD(lparam))),
          static_cast<double>(static_cast<short>(HIWORD(lparam)))};
}

}  // namespace

std::int16_t shift_state() {
  const auto held = [](int code, std::int16_t bit) { return ::GetKeyState(code) < 0 ? bit : std::int16_t{0}; };
  return static_cast<std::int16_t>(held(VK_SHIFT, key::shift) | held(VK_CONTROL, key::control) |
                                   held(VK_MENU, key::alt));
}

WindowHost::WindowHost(ControlSite& site) : site_(&site) {
  const ScreenContext screen;
  dots_per_inch_ = ::GetDeviceCaps(screen, LOGPIXELSY);
}

WindowHost::~WindowHost() {
  detach();
  control_.reset();  // its elements still report to this object
}

void WindowHost::register_class() {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = &WindowHost::procedure;
  description.hInstance = own_module();
  description.hCursor = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
  description.lpszClassName = class_name;
  ::RegisterClassExW(&description);  // the second time it fails, and is not needed
}

void WindowHost::attach(HWND parent, const RECT& place) {
  register_class();
  size_ = {place.right - place.left, place.bottom - place.top};
  const DWORD style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_VISIBLE | (enabled_ ? 0 : WS_DISABLED) |
                      (control_->takes_focus() ? WS_TABSTOP : 0) | (border_style_ && appearance_ != 1 ? WS_BORDER : 0);
  const DWORD extended = (edit_ ? WS_EX_CONTROLPARENT : 0) | (border_style_ && appearance_ == 1 ? WS_EX_CLIENTEDGE : 0);
  window_ = ::CreateWindowExW(extended, class_name, L"", style, place.left, place.top, size_.cx, size_.cy, parent,
                              nullptr, own_module(), this);
  if (!window_) throw RuntimeError(StandardError::automation_error);
  update_dots_per_inch();
  if (edit_) edit_->create_window(window_);
  laid_out_client_ = {-1, -1};
  size_changed(size_);
}

void WindowHost::detach() {
  if (!window_) return;
  const HWND window = std::exchange(window_, nullptr);
  if (std::exchange(captured_, false)) control_->capture_lost();
  if (edit_) edit_->forget_window();
  ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
  ::DestroyWindow(window);
}

void WindowHost::place(const RECT& place) {
  const SIZE size = {place.right - place.left, place.bottom - place.top};
  if (window_) ::SetWindowPos(window_, nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
  size_changed(window_ ? window_size() : size);
}

void WindowHost::request_size(SIZE wanted) {
  if ((wanted.cx == size_.cx && wanted.cy == size_.cy) || site_->takes_size_request(wanted)) return;
  if (window_) {
    ::SetWindowPos(window_, nullptr, 0, 0, wanted.cx, wanted.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  size_changed(window_ ? window_size() : wanted);
}

/// The layout that a change of size leads to may have changed it once more.
SIZE WindowHost::window_size() const {
  RECT outer = {};
  ::GetWindowRect(window_, &outer);
  return {outer.right - outer.left, outer.bottom - outer.top};
}

void WindowHost::size_changed(SIZE size) {
  size_ = size;
  const Rectangle client = client_rectangle();
  if (!control_ || (client.right == laid_out_client_.cx && client.bottom == laid_out_client_.cy)) return;
  laid_out_client_ = {client.right, client.bottom};
  drawings_.clear();
  control_->resize();
  redraw();
}

int WindowHost::border_width() const {
  if (border_style_ == 0) return 0;
  return appearance_ == 1 ? ::GetSystemMetrics(SM_CXEDGE) : ::GetSystemMetrics(SM_CXBORDER);
}

Rectangle WindowHost::client_rectangle() const {
  RECT client = {0, 0, std::max<LONG>(0, size_.cx - 2 * border_width()),
                 std::max<LONG>(0, size_.cy - 2 * border_width())};
  if (window_) noted([&] { ::GetClientRect(window_, &client); });
  return {0, 0, client.right, client.bottom};
}

void WindowHost::width(double twips) {
  request_size({static_cast<LONG>(std::lround(twips / twips_per_pixel_x())), size_.cy});
}

void WindowHost::height(double twips) {
  request_size({size_.cx, static_cast<LONG>(std::lround(twips / twips_per_pixel_y()))});
}

void WindowHost::back_color(Color value) {
  back_color_ = value;
  redraw();
}

void WindowHost::enabled(bool value) {
  enabled_ = value;
  if (window_) ::EnableWindow(window_, value);
  redraw();
}

void WindowHost::border_style(std::int16_t value) {
  if (border_style_ == value) return;
  border_style_ = value;
  update_frame();
}

void WindowHost::appearance(std::int16_t value) {
  if (appearance_ == value) return;
  appearance_ = value;
  update_frame();
}

void WindowHost::update_frame() {
  drawings_.clear();
  if (window_) {
    const bool deep = border_style_ && appearance_ == 1;
    const bool line = border_style_ && !deep;
    const auto change = [this](int index, LONG bit, bool on) {
      const LONG now = ::GetWindowLongW(window_, index);
      ::SetWindowLongW(window_, index, on ? now | bit : now & ~bit);
    };
    change(GWL_STYLE, WS_BORDER, line);
    change(GWL_EXSTYLE, WS_EX_CLIENTEDGE, deep);
    ::SetWindowPos(window_, nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  }
  size_changed(size_);
  redraw();
}

double WindowHost::text_height(StringView text) const {
  const ScreenContext screen;
  const GdiObject<HFONT> font = make_font(font_, dots_per_inch_);
  const Selection selection(screen, font.get());
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(screen, &metrics);
  return static_cast<double>(metrics.tmHeight * (1 + std::count(text.begin(), text.end(), u'\n')));
}

void WindowHost::clear() {
  drawings_.clear();
  redraw();
}

void WindowHost::add_drawing(const Drawing& drawing) {
  // The same drawing again only comes to the front; so the list stays short however often a control draws.
  const auto same = std::find(drawings_.begin(), drawings_.end(), drawing);
  if (same != drawings_.end()) drawings_.erase(same);
  drawings_.push_back(drawing);
  redraw();
}

void WindowHost::draw_edge(const Rectangle& area, std::uint32_t edge, std::uint32_t flags) {
  // An edge replaces another one in its place.
  std::erase_if(drawings_, [&](const Drawing& drawing) {
    const Edge* other = std::get_if<Edge>(&drawing);
    return other && other->area == area;
  });
  add_drawing(Edge{area, edge, flags});
}

void WindowHost::draw_glyph(Glyph glyph, double left, double top) {
  std::erase_if(drawings_, [](const Drawing& drawing) { return std::holds_alternative<PlacedGlyph>(drawing); });
  add_drawing(PlacedGlyph{glyph, static_cast<int>(std::lround(left)), static_cast<int>(std::lround(top))});
}

void WindowHost::set_capture() {
  if (!window_) return;
  captured_ = true;
  noted([&] { ::SetCapture(window_); });
}

void WindowHost::release_capture() {
  captured_ = false;
  if (window_ && ::GetCapture() == window_) noted([] { ::ReleaseCapture(); });
}

void WindowHost::show_hand() {
  hand_ = true;
  noted([] { ::SetCursor(::LoadCursorA(nullptr, MAKEINTRESOURCEA(32649))); });
}

std::vector<ContainedElement*> WindowHost::contained_elements() {
  std::vector<ContainedElement*> found;
  contained_.clear();
  if (!window_) return found;
  for (HWND child = ::GetWindow(window_, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
    if (edit_ && edit_->window() == child) continue;
    contained_.push_back(std::make_unique<ContainedWindow>(child, twips_per_pixel_x()));
    found.push_back(contained_.back().get());
  }
  return found;
}

std::unique_ptr<LabelElement> WindowHost::add_label() {
  return std::make_unique<WindowLabel>(*this);
}

std::unique_ptr<PictureElement> WindowHost::add_picture() {
  return std::make_unique<WindowPicture>(*this);
}

std::unique_ptr<EditElement> WindowHost::add_edit() {
  return std::make_unique<WindowEdit>(*this);
}

std::unique_ptr<DropDownElement> WindowHost::add_drop_down() {
  return std::make_unique<WindowDropDown>();
}

void WindowHost::remove(Drawn& element) {
  std::erase(drawn_, &element);
}

void WindowHost::text_changed() {
  if (control_) control_->text_changed();
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

void WindowHost::redraw() {
  if (window_ && !painting_) ::InvalidateRect(window_, nullptr, FALSE);
}

void WindowHost::update_dots_per_inch() {
  using GetDpiForWindow = UINT(WINAPI*)(HWND);
  const auto ask = reinterpret_cast<GetDpiForWindow>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("user32.dll"), "GetDpiForWindow")));
  const UINT now = ask && window_ ? ask(window_) : 0;
  if (now == 0 || static_cast<int>(now) == dots_per_inch_) return;
  dots_per_inch_ = static_cast<int>(now);
  for (Drawn* element : drawn_) element->dots_per_inch_changed();
  if (edit_) edit_->dots_per_inch_changed();
}

void WindowHost::paint(HDC context) {
  const Rectangle client = client_rectangle();
  fill(context, to_rect(client), back_color_);
  struct Painter {
    const WindowHost& host;
    HDC context;
    void operator()(const FocusRectangle& frame) const {
      const RECT area = to_rect(frame.area);
      ::SetTextColor(context, 0);
      ::SetBkColor(context, 0xFFFFFF);
      host.noted([&] { ::DrawFocusRect(context, &area); });
    }
    void operator()(const Edge& edge) const {
      RECT area = to_rect(edge.area);
      host.noted([&] { ::DrawEdge(context, &area, edge.edge, edge.flags); });
    }
    void operator()(const Box& box) const {
      const RECT area = {box.outline.left, box.outline.top, box.outline.right + 1, box.outline.bottom + 1};
      const GdiObject<HBRUSH> brush(::CreateSolidBrush(resolved(box.color)));
      ::FrameRect(context, &area, brush.get());
    }
    void operator()(const PlacedGlyph& placed) const {
      windows::draw_glyph(context, placed.glyph, placed.left, placed.top);
    }
  };
  for (const Drawing& drawing : drawings_) std::visit(Painter{*this, context}, drawing);
  for (const Drawn* element : drawn_) {
    if (element->shows()) element->draw(context);
  }
  if (window_ && control_->takes_focus() && ::GetFocus() == window_) Painter{*this, context}(FocusRectangle{client});
}

void WindowHost::paint_window(HWND window) {
  PAINTSTRUCT painting;
  const HDC target = ::BeginPaint(window, &painting);
  painting_ = true;
  control_->paint();
  const Rectangle client = client_rectangle();
  if (client.right > 0 && client.bottom > 0) {
    const BufferedPainting buffer(target, to_rect(client));
    paint(buffer.context());
  }
  painting_ = false;
  ::EndPaint(window, &painting);
}

void WindowHost::draw(HDC context, const RECT& area) {
  if (size_.cx <= 0 || size_.cy <= 0) return;
  const int saved = ::SaveDC(context);
  ::SetMapMode(context, MM_ANISOTROPIC);
  ::SetWindowOrgEx(context, 0, 0, nullptr);
  ::SetWindowExtEx(context, size_.cx, size_.cy, nullptr);
  ::SetViewportOrgEx(context, area.left, area.top, nullptr);
  ::SetViewportExtEx(context, area.right - area.left, area.bottom - area.top, nullptr);
  if (border_style_ != 0) {
    RECT frame = {0, 0, size_.cx, size_.cy};
    if (appearance_ == 1) {
      ::DrawEdge(context, &frame, EDGE_SUNKEN, BF_RECT);
    } else {
      ::FrameRect(context, &frame, ::GetSysColorBrush(COLOR_WINDOWFRAME));
    }
    ::SetWindowOrgEx(context, -border_width(), -border_width(), nullptr);
  }
  painting_ = true;
  control_->paint();
  paint(context);
  if (edit_) edit_->draw(context);
  painting_ = false;
  ::RestoreDC(context, saved);
}

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
  const auto held = static_cast<std::int16_t>((wparam & MK_LBUTTON ? mouse_button::left : 0) |
                                              (wparam & MK_RBUTTON ? mouse_button::right : 0) |
                                              (wparam & MK_MBUTTON ? mouse_button::middle : 0));
  switch (message) {
    case WM_LBUTTONDOWN:
      control_->mouse_down(part, mouse_button::left, at);
      break;
    case WM_RBUTTONDOWN:
      control_->mouse_down(part, mouse_button::right, at);
      break;
    case WM_MBUTTONDOWN:
      control_->mouse_down(part, mouse_button::middle, at);
      break;
    case WM_LBUTTONUP:
      control_->mouse_up(part, mouse_button::left, at);
      break;
    case WM_RBUTTONUP:
      control_->mouse_up(part, mouse_button::right, at);
      break;
    case WM_MBUTTONUP:
      control_->mouse_up(part, mouse_button::middle, at);
      break;
    default:
      if (!captured_) hand_ = false;
      control_->mouse_move(part, held, at);
      break;
  }
}

bool WindowHost::handle_key(UINT message, WPARAM wparam, LPARAM) {
  auto code = static_cast<std::int16_t>(wparam);
  std::int16_t shift = shift_state();
  if (message == WM_KEYUP) {
    control_->key_up(Part::surface, code, shift);
  } else {
    control_->key_down(Part::surface, code, shift);
  }
  return code == 0;
}

LRESULT WindowHost::handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
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
      ::SetCursor(::LoadCursorA(nullptr, MAKEINTRESOURCEA(32649)));
      return TRUE;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
      if (handle_key(message, wparam, lparam)) return 0;
      break;
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
      redraw();
      break;
    case dots_per_inch_changed_message:
      update_dots_per_inch();
      laid_out_client_ = {-1, -1};
      size_changed(size_);
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

}  // namespace tornby::windows
