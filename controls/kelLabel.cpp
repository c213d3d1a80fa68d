#include "controls/kelLabel.h"

#include <cmath>

namespace tornby {

// In the order of reading and writing.
enum kelLabel::Index : std::size_t {
  back_color,
  caption,
  font,
  fore_color,
  enabled,
  override_auto_align,
  alignment,
  display_rubber_band,
  auto_size,
  vertical_alignment,
  word_wrap,
  use_border_lines
};

std::span<const Property<kelLabel>> kelLabel::properties() {
  using Value = PropertyValue;
  using Host = ControlHost;
  static constexpr Property<kelLabel> table[] = {
      {u"BackColor", PropertyKind::color, [](const Host&) { return Value(system_color::button_face); },
       [](const kelLabel& c) { return Value(c.BackColor()); },
       [](kelLabel& c, const Value& v) { c.surface().back_color(std::get<Color>(v)); }},
      {u"Caption", PropertyKind::text, [](const Host&) { return Value(String(u"Label1")); },
       [](const kelLabel& c) { return Value(c.Caption()); },
       [](kelLabel& c, const Value& v) { c.label_->caption(std::get<String>(v)); }},
      {u"Font", PropertyKind::font, [](const Host& host) { return Value(host.ambient_font()); },
       [](const kelLabel& c) { return Value(c.Font()); },
       [](kelLabel& c, const Value& v) { c.label_->font(std::get<tornby::Font>(v)); }},
      {u"ForeColor", PropertyKind::color, [](const Host&) { return Value(system_color::button_text); },
       [](const kelLabel& c) { return Value(c.ForeColor()); },
       [](kelLabel& c, const Value& v) { c.label_->fore_color(std::get<Color>(v)); }},
      {u"Enabled", PropertyKind::boolean, [](const Host&) { return Value(true); },
       [](const kelLabel& c) { return Value(c.Enabled()); },
       [](kelLabel& c, const Value& v) { c.surface().enabled(std::get<bool>(v)); }},
      {u"OverrideAutoAlign", PropertyKind::boolean, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelLabel& c) { return Value(c.override_auto_align_); },
       [](kelLabel& c, const Value& v) { c.override_auto_align_ = std::get<bool>(v); }},
      {u"Alignment", PropertyKind::int16, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelLabel& c) { return Value(c.Alignment()); },
       [](kelLabel& c, const Value& v) { c.alignment_ = std::get<std::int16_t>(v); }},
      {u"DisplayRubberBand", PropertyKind::boolean, [](const Host&) { return Value(std::int16_t{1}); },
       [](const kelLabel& c) { return Value(c.display_rubber_band_); },
       [](kelLabel& c, const Value& v) { c.display_rubber_band_ = std::get<bool>(v); }},
      {u"AutoSize", PropertyKind::boolean, [](const Host&) { return Value(true); },
       [](const kelLabel& c) { return Value(c.AutoSize()); },
       [](kelLabel& c, const Value& v) { c.label_->auto_size(std::get<bool>(v)); }},
      {u"VerticalAlignment", PropertyKind::int32, [](const Host&) { return Value(std::int16_t{1}); },
       [](const kelLabel& c) { return Value(c.vertical_alignment_); },
       [](kelLabel& c, const Value& v) { c.vertical_alignment_ = std::get<std::int32_t>(v); }},
      {u"WordWrap", PropertyKind::boolean, [](const Host&) { return Value(false); },
       [](const kelLabel& c) { return Value(c.WordWrap()); },
       [](kelLabel& c, const Value& v) { c.word_wrap_ = std::get<bool>(v); }},
      {u"UseBorderLines", PropertyKind::boolean, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelLabel& c) { return Value(c.use_border_lines_); },
       [](kelLabel& c, const Value& v) { c.use_border_lines_ = std::get<bool>(v); }},
  };
  return table;
}

kelLabel::kelLabel(ControlHost& host) : Control(host), label_(host.add_label()) {
  label_->caption(u"Label1");
  label_->fore_color(system_color::button_text);
  label_->auto_size(true);
}

Color kelLabel::BackColor() const {
  return surface().back_color();
}

void kelLabel::BackColor(Color value) {
  surface().back_color(value);
  changed(back_color);
  draw_frame();
}

String kelLabel::Caption() const {
  return label_->caption();
}

void kelLabel::Caption(StringView value) {
  label_->caption(value);
  changed(caption);
  Refresh();
}

tornby::Font kelLabel::Font() const {
  return label_->font();
}

void kelLabel::Font(const tornby::Font& value) {
  label_->font(value);
  changed(font);
}

Color kelLabel::ForeColor() const {
  return label_->fore_color();
}

void kelLabel::ForeColor(Color value) {
  label_->fore_color(value);
  changed(fore_color);
}

bool kelLabel::Enabled() const {
  return surface().enabled();
}

void kelLabel::Enabled(bool value) {
  surface().enabled(value);
  changed(enabled);
  Refresh();
}

void kelLabel::OverrideAutoAlign(bool value) {
  override_auto_align_ = value;
  changed(override_auto_align);
}

void kelLabel::Alignment(std::int16_t value) {
  alignment_ = value;
  changed(alignment);
}

void kelLabel::DisplayRubberBand(bool value) {
  display_rubber_band_ = value;
  changed(display_rubber_band);
  draw_frame();
}

bool kelLabel::AutoSize() const {
  return label_->auto_size();
}

void kelLabel::AutoSize(bool value) {
  label_->auto_size(value);
  changed(auto_size);
  Refresh();
}

void kelLabel::VerticalAlignment(std::int32_t value) {
  vertical_alignment_ = value;
  changed(vertical_alignment);
  Refresh();
}

void kelLabel::WordWrap(bool value) {
  word_wrap_ = value;
  changed(word_wrap);
}

void kelLabel::UseBorderLines(bool value) {
  use_border_lines_ = value;
  changed(use_border_lines);
  surface().border_style(value ? 1 : 0);
}

void kelLabel::InitProperties() {
  display_rubber_band_ = true;
  override_auto_align_ = false;
  vertical_alignment_ = 1;
  use_border_lines_ = false;
  label_->font(host().ambient_font());
  if (const auto color = host().ambient_back_color()) surface().back_color(*color);
  if (const auto color = host().ambient_fore_color()) label_->fore_color(*color);
  if (host().right_to_left()) alignment_ = 1;
}

void kelLabel::follow(const Ambients& before, const Ambients& now) {
  if (goes_along(BackColor(), before.back_color, now.back_color)) BackColor(*now.back_color);
  if (goes_along(ForeColor(), before.fore_color, now.fore_color)) ForeColor(*now.fore_color);
  if (!goes_along(Font(), before.font, now.font)) return;
  Font(*now.font);
  Refresh();
}

void kelLabel::ReadProperties(const PropertyBag& bag) {
  read_properties(*this, host(), bag, properties());
  surface().border_style(use_border_lines_ ? 1 : 0);
}

void kelLabel::WriteProperties(PropertyBag& bag) const {
  for (const auto& property : properties()) write_property(*this, host(), bag, property);
}

void kelLabel::resize() {
  draw_frame();
  label_->enabled(Enabled());
  label_->alignment(alignment_);
  label_->word_wrap(word_wrap_);
  if (label_->auto_size()) {
    fit_control_to_text();
  } else {
    fit_text_to_control();
  }
  if (!override_auto_align_) stretch_contained_elements();
}

void kelLabel::mouse_down(Part, std::int16_t button, Pointer) {
  if (button == mouse_button::right) InfoClick.raise();
}

void kelLabel::mouse_up(Part, std::int16_t button, Pointer) {
  MouseUp.raise(button);
}

void kelLabel::changed(Index property) {
  host().property_changed(properties()[property].name);
}

void kelLabel::draw_frame() {
  if (use_border_lines_) return;
  Surface& area = surface();
  area.clear();
  const auto right = static_cast<std::int32_t>(std::lrint(area.scale_width()));
  const auto bottom = static_cast<std::int32_t>(std::lrint(area.scale_height()));
  if (display_rubber_band_) area.draw_focus_rectangle({0, 0, right, bottom});
}

void kelLabel::fit_text_to_control() {
  Surface& area = surface();
  area.font(label_->font());
  if (vertical_alignment_ == 0) {
    label_->height(area.scale_height());
  } else if (word_wrap_) {
    label_->auto_size(true);  // it grows to its wrapped text
  } else {
    label_->height(area.text_height(label_->caption()));
  }
  label_->width(area.scale_width() - 6);
  label_->left(2);
  switch (vertical_alignment_) {
    case 0:
      label_->top(1);
      break;
    case 1:
      label_->top(area.scale_height() / 2 - label_->height() / 2);
      break;
    case 2:
      label_->top(area.scale_height() - label_->height());
      break;
    default:
      break;
  }
  label_->auto_size(false);
}

void kelLabel::fit_control_to_text() {
  Surface& area = surface();
  area.width(label_->width() * area.twips_per_pixel_x());
  area.height(label_->height() * area.twips_per_pixel_y());
  label_->left(0);
  label_->top(0);
}

void kelLabel::stretch_contained_elements() {
  Surface& area = surface();
  const double width = area.scale_width() * area.twips_per_pixel_x();
  const double height = area.scale_height() * area.twips_per_pixel_y();
  for (ContainedElement* element : area.contained_elements()) element->move(0, 0, width, height);
}

}  // namespace tornby
