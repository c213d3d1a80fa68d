#include "controls/windows/elements.h"

#include <algorithm>
#include <cmath>

#include "controls/windows/canvas.h"
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
  Font copy = value;
  font_handle_ = make_font(value, host_->dots_per_inch());
  font_ = std::move(copy);
  show_change();
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
  const double lines = height_ / text_metrics(font_handle_.get()).tmHeight;
  font_handle_ = make_font(font_, host_->dots_per_inch());
  height_ = lines * text_metrics(font_handle_.get()).tmHeight;
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

void WindowLabel::draw(const Canvas& canvas) const {
  const int scheme_color = host_->control().accessible_role() == AccessibleRole::link ? COLOR_HOTLIGHT : COLOR_BTNTEXT;
  const COLORREF color =
      enabled_ ? legible(resolved(fore_color_), host_->ground(), scheme_color) : ::GetSysColor(COLOR_GRAYTEXT);
  const UINT direction = host_->right_to_left() ? DT_RTLREADING : 0;
  canvas.text(caption_, area(), format() | direction, font_, host_->dots_per_inch(), font_handle_.get(), color);
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

void WindowPicture::draw(const Canvas& canvas) const {
  const auto* drawable = dynamic_cast<const DrawablePicture*>(picture_.get());
  if (drawable) drawable->draw(canvas.context(), canvas.target(area()));
}

}  // namespace tornby::windows
