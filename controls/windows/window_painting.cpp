// How a control is painted in its window, and drawn anywhere else.
#include <cmath>

#include "controls/windows/canvas.h"
#include "controls/windows/edit_field.h"
#include "controls/windows/window_host.h"

namespace tornby::windows {
namespace {

/// A painting that the system asked for, until the end of the scope.
class WindowPainting {
 public:
  explicit WindowPainting(HWND window) : window_(window), context_(::BeginPaint(window, &painting_)) {}
  ~WindowPainting() { ::EndPaint(window_, &painting_); }
  WindowPainting(const WindowPainting&) = delete;
  WindowPainting& operator=(const WindowPainting&) = delete;
  HDC context() const { return context_; }

 private:
  HWND window_;
  PAINTSTRUCT painting_;
  HDC context_;
};

/// Gives a device context its settings back.
class KeptContext {
 public:
  explicit KeptContext(HDC context) : context_(context), saved_(::SaveDC(context)) {}
  ~KeptContext() { ::RestoreDC(context_, saved_); }
  KeptContext(const KeptContext&) = delete;
  KeptContext& operator=(const KeptContext&) = delete;

 private:
  HDC context_;
  int saved_;
};

class RaisedFlag {
 public:
  explicit RaisedFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~RaisedFlag() { flag_ = false; }
  RaisedFlag(const RaisedFlag&) = delete;
  RaisedFlag& operator=(const RaisedFlag&) = delete;

 private:
  bool& flag_;
};

}  // namespace

// A window is painted for two reasons: the system asks for it, which the control hears of, or the control looks
// different, which it knows. The second kind is a paint request without any area.
void WindowHost::redraw() {
  if (painting_) return;
  if (window_) {
    stale_ = true;
    ::RedrawWindow(window_, nullptr, nullptr, RDW_INTERNALPAINT);
  }
  site_->view_changed();
}

void WindowHost::request_paint() {
  if (window_) ::InvalidateRect(window_, nullptr, FALSE);
  redraw();
}

void WindowHost::clear() {
  drawings_.clear();
  redraw();
}

void WindowHost::add_drawing(const Drawings::Drawing& drawing) {
  drawings_.add(drawing);
  redraw();
}

void WindowHost::draw_glyph(Glyph glyph, double left, double top) {
  add_drawing(PlacedGlyph{glyph, static_cast<int>(std::lround(left)), static_cast<int>(std::lround(top))});
}

void WindowHost::paint(const Canvas& canvas) {
  const SIZE client = client_size();
  canvas.fill({0, 0, client.cx, client.cy}, ground());
  drawings_.paint(canvas, ground(), site_->displays_as_default(), last_error_);
  for (const Drawn* element : drawn_) {
    if (element->shows()) element->draw(canvas);
  }
  if (window_ && control_->takes_focus() && ::GetFocus() == window_)
    canvas.focus_rectangle({0, 0, client.cx, client.cy}, ground());
}

void WindowHost::paint_window(HWND window) {
  const bool asked = ::GetUpdateRect(window, nullptr, FALSE) != FALSE;
  if (std::exchange(stale_, false)) ::InvalidateRect(window, nullptr, FALSE);
  const WindowPainting painting(window);
  const RaisedFlag flag(painting_);
  if (asked) control_->paint();
  const SIZE client = client_size();
  if (client.cx <= 0 || client.cy <= 0) return;
  const BufferedPainting buffer(painting.context(), {0, 0, client.cx, client.cy});
  paint(Canvas(buffer.context()));
}

void WindowHost::draw(HDC context, const RECT& area) {
  if (size_.cx <= 0 || size_.cy <= 0) return;
  const KeptContext kept(context);
  const RaisedFlag flag(painting_);
  control_->paint();
  ::SetTextAlign(context, TA_LEFT | TA_TOP);
  Canvas canvas(context, size_, area);
  const RECT outer = {0, 0, size_.cx, size_.cy};
  canvas.clip(outer);
  const COLORREF line = ::GetSysColor(COLOR_WINDOWFRAME);
  if (border_style_ != 0 && appearance_ == 1) canvas.edge(outer, EDGE_SUNKEN, BF_RECT);
  if (border_style_ != 0 && appearance_ != 1) canvas.frame(outer, line, line);
  canvas.move(border_width(), border_width());
  const SIZE client = client_size();
  canvas.clip({0, 0, client.cx, client.cy});
  paint(canvas);
  if (edit_) edit_->draw(canvas);
}

}  // namespace tornby::windows
