// A label with vertical alignment, a frame, and a choice between fitting itself to its text and the text to itself.
//
// A write that changes a stored setting tells the host so, under the property's name. Some writes lay the control out
// anew, others do not: after Alignment, WordWrap, Font, ForeColor and OverrideAutoAlign call Refresh. Alignment and
// WordWrap show nothing before that.
#pragma once

#include <memory>
#include <span>

#include <tornby/controls/control.h>

namespace tornby {

class kelLabel final : public Control {
 public:
  explicit kelLabel(ControlHost& host);

  /// Does nothing.
  void ShowAbout() {}

  /// The colour behind the text. A write draws the dotted frame again.
  Color BackColor() const;
  void BackColor(Color value);

  /// The text. A write lays the control out.
  String Caption() const;
  void Caption(StringView value);

  tornby::Font Font() const;
  void Font(const tornby::Font& value);

  Color ForeColor() const;
  void ForeColor(Color value);

  /// Whether the control answers the user. A write lays the control out.
  bool Enabled() const;
  void Enabled(bool value);

  /// Lays the control out.
  void Refresh() { resize(); }

  /// False: every layout stretches what the form has placed inside the control over its whole client area.
  bool OverrideAutoAlign() const { return override_auto_align_; }
  void OverrideAutoAlign(bool value);

  /// 0 left, 1 right, 2 centre, on every form. A new label on one that is read from right to left starts at the right.
  std::int16_t Alignment() const { return alignment_; }
  void Alignment(std::int16_t value);

  /// A dotted frame, drawn while UseBorderLines is false. A write draws it again.
  bool DisplayRubberBand() const { return display_rubber_band_; }
  void DisplayRubberBand(bool value);

  /// True: the control takes the size of its text. False: the text is fitted to the control. A write lays it out.
  /// The size is the outer one: with UseBorderLines the border covers the rim of the text.
  bool AutoSize() const;
  void AutoSize(bool value);

  /// 0 top, 1 centre, 2 bottom; any other number leaves the text where it is. It counts while AutoSize is false.
  /// A write lays the control out.
  std::int32_t VerticalAlignment() const { return vertical_alignment_; }
  void VerticalAlignment(std::int32_t value);

  bool WordWrap() const { return word_wrap_; }
  void WordWrap(bool value);

  /// A border of a single line, in place of the dotted frame.
  bool UseBorderLines() const { return use_border_lines_; }
  void UseBorderLines(bool value);

  /// The right button went down on the control or its text.
  Event<> InfoClick;
  /// A button (1 left, 2 right, 4 middle) was released over the control or its text.
  Event<std::int16_t&> MouseUp;

  void InitProperties() override;
  void ReadProperties(const PropertyBag& bag) override;
  /// A DisplayRubberBand is always stored, since its default, the integer 1, equals neither true nor false.
  void WriteProperties(PropertyBag& bag) const override;
  void resize() override;
  void follow(const Ambients& before, const Ambients& now) override;
  void mouse_down(Part part, std::int16_t button, Pointer at) override;
  void mouse_up(Part part, std::int16_t button, Pointer at) override;
  String accessible_name() const override { return label_->caption(); }
  AccessibleRole accessible_role() const override { return AccessibleRole::text; }

 private:
  enum Index : std::size_t;
  static std::span<const Property<kelLabel>> properties();

  void changed(Index property);
  void draw_frame();
  void fit_text_to_control();
  void fit_control_to_text();
  void stretch_contained_elements();

  std::unique_ptr<LabelElement> label_;
  bool use_border_lines_ = false;
  bool display_rubber_band_ = true;
  bool override_auto_align_ = false;
  std::int32_t vertical_alignment_ = 1;
  std::int16_t alignment_ = 0;  // the text has these two since the latest layout
  bool word_wrap_ = false;
};

}  // namespace tornby
