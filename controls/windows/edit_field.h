// The edit field, a window of its own while its control has one, and the drop-down field that is only measured.
#pragma once

#include "controls/windows/elements.h"

namespace tornby::windows {

class WindowEdit final : public WindowElement<EditElement> {
 public:
  explicit WindowEdit(WindowHost& host);
  ~WindowEdit() override;

  using WindowElement::height;
  void height(double value) override;
  String text() const override { return text_; }
  void text(StringView value) override;
  Font font() const override { return font_; }
  void font(const Font& value) override;
  Color back_color() const override { return back_color_; }
  void back_color(Color value) override;
  bool enabled() const override { return enabled_; }
  void enabled(bool value) override;
  bool locked() const override { return locked_; }
  void locked(bool value) override;
  std::int32_t max_length() const override { return max_length_; }
  void max_length(std::int32_t value) override;

  HWND window() const { return window_; }
  /// Raises 440 when the system makes none.
  void create_window(HWND parent);
  /// The window is gone, or about to go with its parent.
  void forget_window() { window_ = nullptr; }
  /// The user edited the window's text. True when it is another one now.
  bool take_text();
  HBRUSH colour(HDC context);
  /// Draws the field where it has no window.
  void draw(const Canvas& canvas) const;
  void dots_per_inch_changed();
  /// Texts may be read in the other direction now, for which a window is made anew.
  void direction_changed();

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam);
  void show_change() override;
  COLORREF text_color() const;

  HWND window_ = nullptr;
  WNDPROC original_ = nullptr;
  bool right_to_left_ = false;  // of the window
  bool setting_text_ = false;
  String text_;
  Font font_;
  GdiObject<HFONT> font_handle_;
  GdiObject<HBRUSH> brush_;
  Color back_color_ = system_color::window_background;
  bool enabled_ = true;
  bool locked_ = false;
  std::int32_t max_length_ = 0;
};

/// Measures a real drop-down field that lives just as long.
class WindowDropDown final : public DropDownElement {
 public:
  std::int32_t button_width() const override;
};

}  // namespace tornby::windows
