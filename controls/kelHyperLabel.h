// A link, shown as a line of text or as a picture, that lights up under the pointer and raises Click.
//
// What a click opens is up to its handler. Enter and the space bar click too while the control has the focus. In text
// mode the caption starts one line high and as wide as the control, and the control takes the caption's height.
#pragma once

#include <memory>
#include <span>

#include <tornby/controls/control.h>

namespace tornby {

class kelHyperLabel final : public Control {
 public:
  explicit kelHyperLabel(ControlHost& host);

  /// True: the caption wraps and grows to its text, and the control follows its height.
  bool UseDynamicHeight() const { return use_dynamic_height_; }
  void UseDynamicHeight(bool value);

  /// The text. One that begins with "HyperLabel", the placeholder of a new control, turns into the control's name on
  /// its form when it is read. A write does not tell the host of a change: it is saved together with the next one.
  String Caption() const;
  void Caption(StringView value);

  Color BackColor() const;
  void BackColor(Color value);

  /// The font of the text. A write does not lay the control out: outside UseDynamicHeight its height follows with the
  /// next layout.
  tornby::Font Font() const;
  void Font(const tornby::Font& value);

  /// 0 left, 1 right, 2 centre, on every form; with any other number a picture stays where it is. A new link on a form
  /// that is read from right to left starts at the right.
  std::int16_t Alignment() const;
  void Alignment(std::int16_t value);

  /// The caption's colour from the press of the left button on it until the pointer leaves. A press without a move
  /// before it, as on a touch screen, leaves the colour there: write LinkColor in Click to take it back.
  Color ClickColor() const { return click_color_; }
  void ClickColor(Color value);

  /// The colour that the caption shows at this moment, also while the pointer is over it. A colour written then lasts
  /// until the pointer leaves. In a scheme of high contrast, a colour that could hardly be read on BackColor is shown
  /// as the scheme's own for links, and stays here what it is.
  Color LinkColor() const;
  void LinkColor(Color value);

  /// Does nothing.
  void ShowAbout() {}

  /// The caption's colour while the pointer is over the control.
  Color HoverColor() const { return hover_color_; }
  void HoverColor(Color value);

  /// Shown in place of the caption; null for none, which is also what an empty picture counts as.
  PicturePointer Picture() const { return picture_; }
  void Picture(const PicturePointer& value);

  /// The right button went down on the control.
  Event<> InfoClick;
  /// A button (1 left, 2 right, 4 middle) was released over the control. Raised after Click.
  Event<std::int16_t&> MouseUp;
  /// The left button was released after it went down on the control, or the control was clicked without the pointer.
  Event<> Click;

  void InitProperties() override;
  void ReadProperties(const PropertyBag& bag) override;
  /// LinkColor is left out when it is 0x008000, though a missing one reads as 0xD54600.
  void WriteProperties(PropertyBag& bag) const override;
  void resize() override;
  void follow(const Ambients& before, const Ambients& now) override;
  void mouse_down(Part part, std::int16_t button, Pointer at) override;
  void mouse_move(Part part, std::int16_t held, Pointer at) override;
  void mouse_up(Part part, std::int16_t button, Pointer at) override;
  void capture_lost() override;
  void key_down(Part part, std::int16_t& key_code, std::int16_t& shift) override;
  void activate() override { Click.raise(); }
  bool takes_focus() const override { return true; }
  String accessible_name() const override { return label_->caption(); }
  AccessibleRole accessible_role() const override { return AccessibleRole::link; }

 private:
  enum Index : std::size_t;
  static std::span<const Property<kelHyperLabel>> properties();

  void changed(Index property);
  void make_caption_one_line_high();
  void follow_caption_height();
  void place_picture();
  bool hovering() const;
  bool inside_picture(Pointer at) const;
  bool outside(Pointer at) const;
  void start_hover();
  void end_hover();

  std::unique_ptr<LabelElement> label_;
  std::unique_ptr<PictureElement> image_;
  Color click_color_ = 255;
  Color hover_color_ = system_color::button_shadow;
  PicturePointer picture_;
  bool use_dynamic_height_ = false;
  bool pressed_ = false;
};

}  // namespace tornby
