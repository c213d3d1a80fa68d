#include "controls/windows/window_host.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/runtime_error.h"
#include "controls/windows/edit_field.h"

namespace tornby::windows {
namespace {

constexpr wchar_t class_name[] = L"TornbyControl";

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

}  // namespace

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
  lay_out();
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

void WindowHost::lay_out() {
  laid_out_ = true;
  laid_out_client_ = {-1, -1};
  size_changed(size_);
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
  const SIZE client = client_size();
  if (!laid_out_ || (client.cx == laid_out_client_.cx && client.cy == laid_out_client_.cy)) return;
  laid_out_client_ = client;
  drawings_.clear();
  control_->resize();
  request_paint();
}

int WindowHost::border_width() const {
  if (border_style_ == 0) return 0;
  return appearance_ == 1 ? ::GetSystemMetrics(SM_CXEDGE) : ::GetSystemMetrics(SM_CXBORDER);
}

SIZE WindowHost::client_size() const {
  RECT client = {0, 0, std::max<LONG>(0, size_.cx - 2 * border_width()),
                 std::max<LONG>(0, size_.cy - 2 * border_width())};
  if (window_) ::GetClientRect(window_, &client);
  return {client.right, client.bottom};
}

Rectangle WindowHost::client_rectangle() const {
  SIZE client = {};
  last_error_.of([&] { client = client_size(); });
  return {0, 0, client.cx, client.cy};
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
  request_paint();
}

double WindowHost::text_height(StringView text) const {
  const GdiObject<HFONT> font = make_font(font_, dots_per_inch_);
  return static_cast<double>(text_metrics(font.get()).tmHeight * (1 + std::count(text.begin(), text.end(), u'\n')));
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

void WindowHost::form_changed() {
  if (edit_) edit_->direction_changed();
  redraw();
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

}  // namespace tornby::windows
