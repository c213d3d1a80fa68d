// The elements of a control that are drawn on its surface: the caption and the picture.
#pragma once

#include "controls/control.h"
#include "controls/windows/gdi.h"

namespace tornby::windows {

class Canvas;
class WindowHost;

/// A picture that can be drawn in a rectangle of a device context.
class DrawablePicture : public Picture {
 public:
  virtual void draw(HDC context, const RECT& area) const = 0;
};

/// What the elements have in common: a place, and a host that draws again when it changes.
template <class Base>
class WindowElement : public Base {
 public:
  explicit WindowElement(WindowHost& host) : host_(&host) {}
  double left() const override { return left_; }
  void left(double value) override { set(left_, value); }
  double top() const override { return top_; }
  void top(double value) override { set(top_, value); }
  double width() const override { return width_; }
  void width(double value) override { set(width_, value); }
  double height() const override { return height_; }
  void height(double value) override { set(height_, value); }
  bool visible() const override { return visible_; }
  void visible(bool value) override { set(visible_, value); }

  /// The place in whole pixels.
  RECT area() const;

 protected:
  template <class T>
  void set(T& member, const T& value) {
    if (member == value) return;
    member = value;
    show_change();
  }
  virtual void show_change();

  WindowHost* host_;
  double left_ = 0;
  double top_ = 0;
  double width_ = 0;
  double height_ = 0;
  bool visible_ = true;
};

/// An element that is drawn on the surface and can be hit there.
class Drawn {
 public:
  virtual ~Drawn() = default;
  virtual void draw(const Canvas& canvas) const = 0;
  virtual RECT drawn_area() const = 0;
  virtual bool shows() const = 0;
  virtual Part part() const = 0;
  virtual void dots_per_inch_changed() = 0;
};

class WindowLabel final : public WindowElement<LabelElement>, public Drawn {
 public:
  explicit WindowLabel(WindowHost& host);
  ~WindowLabel() override;

  using WindowElement::width;
  void width(double value) override;
  String caption() const override { return caption_; }
  void caption(StringView value) override;
  Font font() const override { return font_; }
  void font(const Font& value) override;
  Color fore_color() const override { return fore_color_; }
  void fore_color(Color value) override { set(fore_color_, value); }
  std::int16_t alignment() const override { return alignment_; }
  void alignment(std::int16_t value) override { set(alignment_, value); }
  bool auto_size() const override { return auto_size_; }
  void auto_size(bool value) override;
  bool word_wrap() const override { return word_wrap_; }
  void word_wrap(bool value) override;
  bool enabled() const override { return enabled_; }
  void enabled(bool value) override { set(enabled_, value); }
  String tag() const override { return tag_; }
  void tag(StringView value) override { tag_ = value; }

  void draw(const Canvas& canvas) const override;
  RECT drawn_area() const override { return area(); }
  bool shows() const override { return visible_; }
  Part part() const override { return Part::label; }
  void dots_per_inch_changed() override;

 private:
  void fit();
  UINT format() const;

  String caption_;
  String tag_;
  Font font_;
  GdiObject<HFONT> font_handle_;
  Color fore_color_ = system_color::button_text;
  std::int16_t alignment_ = 0;
  bool auto_size_ = false;
  bool word_wrap_ = false;
  bool enabled_ = true;
};

class WindowPicture final : public WindowElement<PictureElement>, public Drawn {
 public:
  explicit WindowPicture(WindowHost& host);
  ~WindowPicture() override;

  /// A DrawablePicture; any other is shown as an empty space of its size.
  void picture(const PicturePointer& value) override;

  void draw(const Canvas& canvas) const override;
  RECT drawn_area() const override { return area(); }
  bool shows() const override { return visible_ && picture_; }
  Part part() const override { return Part::picture; }
  void dots_per_inch_changed() override { picture(PicturePointer(picture_)); }

 private:
  PicturePointer picture_;
};

}  // namespace tornby::windows
