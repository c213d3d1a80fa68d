// An edit field with a push button at its right end. The button opens nothing itself: it raises ControlClick and then
// OpenBrowse, and the form's handler shows what it likes and writes the result into Text.
//
// F4 and Alt+Down press the button too, in the edit field and on the control itself.
#pragma once

#include <memory>
#include <span>

#include <tornby/controls/control.h>

namespace tornby {

class kelBrowseButton final : public Control {
 public:
  explicit kelBrowseButton(ControlHost& host);

  /// The text of the edit field. A control stored without one gets "0".
  String Text() const;
  void Text(StringView value);

  /// Does nothing.
  void ShowAbout() {}

  bool Enabled() const;
  void Enabled(bool value);

  /// 0 flat and without a border, 1 three-dimensional with one. Any other number is kept and leaves the border as it
  /// is, in a stored control as in a new one. A new control takes the form's look.
  std::int16_t BorderApperance() const;
  void BorderApperance(std::int16_t value);

  /// The colour behind the text and round the field.
  Color BackColor() const { return back_color_; }
  void BackColor(Color value);

  /// The field's font. A new control has the field's own default until it is written; one that is read without a stored
  /// font gets the form's.
  tornby::Font Font() const;
  void Font(const tornby::Font& value);

  /// True: the user cannot change the text, which is italic. The field is disabled until the next painting by the
  /// system, change of the focus or write of BackColor.
  bool Locked() const;
  void Locked(bool value);

  /// In characters; 0 is no limit.
  std::int32_t MaxLength() const;
  void MaxLength(std::int32_t value);

  /// A write disables or enables the edit field, until the next painting by the system, change of the focus or write of
  /// BackColor enables it as Enabled says.
  bool ReadOnly() const { return read_only_; }
  void ReadOnly(bool value);

  /// Not 0: the button stands one pixel in from the right and bottom edges and two from the top.
  std::int32_t Style() const { return style_; }
  void Style(std::int32_t value);

  /// Shows the button as under the pointer.
  void setOver();
  /// Shows the button at rest.
  void setOut();
  /// Shows the button pressed.
  void setDown();
  /// Finds the button's place again. Every layout and every painting does so.
  void InitialiseRect();
  /// Draws the glyph on the button.
  void PaintButton();
  /// Draws the button's edge, raised or pressed.
  void DrawNormalFocus(bool Down);

  /// A key went down while the control itself had the focus, which it has only while its field is disabled: the field
  /// takes the focus and its keys. Shift is the sum of 1 shift, 2 control, 4 alt.
  Event<std::int16_t&, std::int16_t&> KeyDown;
  /// A button (1 left, 2 right, 4 middle) was released over the edit field or the control.
  Event<std::int16_t&> MouseUp;
  /// The right button went down on the edit field or the control.
  Event<> InfoClick;
  /// A key was released in the edit field, under Alt too.
  Event<std::int16_t&, std::int16_t&> KeyUp;
  /// The button was clicked.
  Event<> ControlClick;
  /// Never raised.
  Event<> DblClick;
  /// Never raised.
  Event<> Click;
  /// A character was typed in the edit field; the handler may change it, to 0 to swallow it. Also raised after the
  /// release of Delete, with that key's code 46.
  Event<std::int16_t&> KeyPress;
  /// The text changed, Enter was typed or Delete was released. What the handler puts into the text is not taken over:
  /// write Text instead.
  Event<String&> ChangeText;
  /// Follows each ControlClick.
  Event<> OpenBrowse;

  void InitProperties() override;
  void ReadProperties(const PropertyBag& bag) override;
  void WriteProperties(PropertyBag& bag) const override;
  void resize() override;
  void follow(const Ambients& before, const Ambients& now) override;
  void paint() override;
  void mouse_down(Part part, std::int16_t button, Pointer at) override;
  void mouse_move(Part part, std::int16_t held, Pointer at) override;
  void mouse_up(Part part, std::int16_t button, Pointer at) override;
  void capture_lost() override;
  void key_down(Part part, std::int16_t& key_code, std::int16_t& shift) override;
  void key_up(Part part, std::int16_t& key_code, std::int16_t& shift) override;
  void key_press(Part part, std::int16_t& character) override;
  void text_changed() override;
  void got_focus() override { paint(); }
  void lost_focus() override;
  void activate() override;
  String accessible_name() const override { return host().display_name(); }
  AccessibleRole accessible_role() const override { return AccessibleRole::combo_box; }

 private:
  enum Index : std::size_t;
  enum class ButtonState : std::int16_t { normal = 1, hover = 2, pressed = 3 };
  static std::span<const Property<kelBrowseButton>> properties();

  void changed(Index property);
  void show_border();
  void show_back_color();
  void show_lock();
  void raise_change_text();
  bool over_button(Pointer at) const;
  void track(Pointer at);
  void take_capture();
  void let_go_of_capture();

  std::unique_ptr<EditElement> edit_;
  std::unique_ptr<LabelElement> label_;
  std::unique_ptr<DropDownElement> drop_down_;
  ButtonState button_state_ = ButtonState::normal;
  Rectangle button_;
  std::int32_t button_width_;
  Color back_color_ = system_color::window_background;
  bool read_only_ = false;
  std::int32_t style_ = 0;
  bool captured_ = false;
  bool pressing_ = false;  // the left button went down on the button, and is held
};

}  // namespace tornby
