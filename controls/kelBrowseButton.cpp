#include "controls/kelBrowseButton.h"

#include <algorithm>
#include <cmath>

namespace tornby {
namespace {

constexpr std::uint32_t raised_edge = 5;
constexpr std::uint32_t sunken_edge = 10;
constexpr std::uint32_t all_sides = 15;
constexpr std::uint32_t all_sides_flat = 16399;

}  // namespace

// In the order of reading.
enum kelBrowseButton::Index : std::size_t {
  enabled,
  border_apperance,
  back_color,
  text,
  font,
  locked,
  max_length,
  read_only,
  style
};

std::span<const Property<kelBrowseButton>> kelBrowseButton::properties() {
  using Value = PropertyValue;
  using Host = ControlHost;
  static constexpr Property<kelBrowseButton> table[] = {
      {u"Enabled", PropertyKind::boolean, [](const Host&) { return Value(true); },
       [](const kelBrowseButton& c) { return Value(c.Enabled()); },
       [](kelBrowseButton& c, const Value& v) { c.surface().enabled(std::get<bool>(v)); }},
      {u"BorderApperance", PropertyKind::int16, [](const Host&) { return Value(std::int16_t{1}); },
       [](const kelBrowseButton& c) { return Value(c.BorderApperance()); },
       [](kelBrowseButton& c, const Value& v) {
         c.surface().appearance(std::get<std::int16_t>(v));
         c.show_border();
       }},
      {u"BackColor", PropertyKind::color, [](const Host&) { return Value(system_color::window_background); },
       [](const kelBrowseButton& c) { return Value(c.back_color_); },
       [](kelBrowseButton& c, const Value& v) {
         c.back_color_ = std::get<Color>(v);
         c.show_back_color();
       }},
      {u"Text", PropertyKind::text, [](const Host&) { return Value(String(u"0")); },
       [](const kelBrowseButton& c) { return Value(c.Text()); },
       [](kelBrowseButton& c, const Value& v) { c.edit_->text(std::get<String>(v)); }},
      {u"Font", PropertyKind::font, [](const Host& host) { return Value(host.ambient_font()); },
       [](const kelBrowseButton& c) { return Value(c.Font()); },
       [](kelBrowseButton& c, const Value& v) { c.edit_->font(std::get<tornby::Font>(v)); }},
      {u"Locked", PropertyKind::boolean, [](const Host&) { return Value(false); },
       [](const kelBrowseButton& c) { return Value(c.Locked()); },
       [](kelBrowseButton& c, const Value& v) { c.edit_->locked(std::get<bool>(v)); }},
      {u"MaxLength", PropertyKind::int32, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelBrowseButton& c) { return Value(c.MaxLength()); },
       [](kelBrowseButton& c, const Value& v) { c.edit_->max_length(std::get<std::int32_t>(v)); }},
      {u"ReadOnly", PropertyKind::boolean, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelBrowseButton& c) { return Value(c.read_only_); },
       [](kelBrowseButton& c, const Value& v) { c.read_only_ = std::get<bool>(v); }},
      {u"Style", PropertyKind::int32, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelBrowseButton& c) { return Value(c.style_); },
       [](kelBrowseButton& c, const Value& v) { c.style_ = std::get<std::int32_t>(v); }},
  };
  return table;
}

kelBrowseButton::kelBrowseButton(ControlHost& host)
    : Control(host),
      edit_(host.add_edit()),
      label_(host.add_label()),
      drop_down_(host.add_drop_down()),
      button_width_(drop_down_->button_width()) {
  show_back_color();
  surface().appearance(1);
  show_border();
  label_->caption(u"");
  label_->visible(false);
  edit_->visible(true);
}

String kelBrowseButton::Text() const {
  return edit_->text();
}

void kelBrowseButton::Text(StringView value) {
  edit_->text(value);
  changed(text);
}

bool kelBrowseButton::Enabled() const {
  return surface().enabled();
}

void kelBrowseButton::Enabled(bool value) {
  surface().enabled(value);
  edit_->enabled(value);
  label_->enabled(value);
  changed(enabled);
}

std::int16_t kelBrowseButton::BorderApperance() const {
  return surface().appearance();
}

void kelBrowseButton::BorderApperance(std::int16_t value) {
  surface().appearance(value);
  changed(border_apperance);
  show_border();
}

void kelBrowseButton::BackColor(Color value) {
  back_color_ = value;
  show_back_color();
  paint();
  changed(back_color);
}

tornby::Font kelBrowseButton::Font() const {
  return edit_->font();
}

void kelBrowseButton::Font(const tornby::Font& value) {
  edit_->font(value);
  changed(font);
}

bool kelBrowseButton::Locked() const {
  return edit_->locked();
}

void kelBrowseButton::Locked(bool value) {
  edit_->locked(value);
  changed(locked);
  show_lock();
}

std::int32_t kelBrowseButton::MaxLength() const {
  return edit_->max_length();
}

void kelBrowseButton::MaxLength(std::int32_t value) {
  edit_->max_length(value);
  changed(max_length);
}

void kelBrowseButton::ReadOnly(bool value) {
  read_only_ = value;
  changed(read_only);
  edit_->enabled(!value);
}

void kelBrowseButton::Style(std::int32_t value) {
  style_ = value;
  changed(style);
}

void kelBrowseButton::setOver() {
  InitialiseRect();
  button_state_ = ButtonState::hover;
  PaintButton();
}

void kelBrowseButton::setOut() {
  button_state_ = ButtonState::normal;
  PaintButton();
  DrawNormalFocus(false);
}

void kelBrowseButton::setDown() {
  button_state_ = ButtonState::pressed;
  PaintButton();
  DrawNormalFocus(true);
}

void kelBrowseButton::InitialiseRect() {
  button_ = surface().client_rectangle();
  if (style_ != 0) {
    button_.top += 2;
    button_.right -= 1;
    button_.bottom -= 1;
  }
  button_.left = button_.right - button_width_;
}

void kelBrowseButton::PaintButton() {
  const Glyph glyph = Enabled() ? Glyph::browse : Glyph::browse_greyed;
  const std::int32_t inset = style_ != 0 ? 0 : 1;
  surface().draw_glyph(glyph, button_.right - 14 - inset, button_.bottom - surface().glyph_height(glyph) - 4 - inset);
}

void kelBrowseButton::DrawNormalFocus(bool Down) {
  surface().draw_edge(button_, Down ? sunken_edge : raised_edge, Down ? all_sides_flat : all_sides);
  surface().draw_box({button_.left + 2, button_.top + 2, button_.right - 3, button_.bottom - 3},
                     system_color::button_face);
}

void kelBrowseButton::InitProperties() {
  back_color_ = system_color::window_background;
  show_back_color();
  if (const auto look = host().ambient_appearance()) {
    surface().appearance(*look);
    show_border();
  }
}

void kelBrowseButton::ReadProperties(const PropertyBag& bag) {
  read_properties(*this, host(), bag, properties());
  show_lock();
}

void kelBrowseButton::WriteProperties(PropertyBag& bag) const {
  for (const Index property :
       {enabled, font, border_apperance, back_color, text, locked, max_length, read_only, style}) {
    write_property(*this, host(), bag, properties()[property]);
  }
}

void kelBrowseButton::follow(const Ambients& before, const Ambients& now) {
  if (goes_along(BorderApperance(), before.appearance, now.appearance)) BorderApperance(*now.appearance);
  if (!goes_along(Font(), before.font, now.font)) return;
  Font(*now.font);
  resize();
}

void kelBrowseButton::resize() {
  edit_->height(1);  // it keeps its own least height
  edit_->width(std::max(0.0, surface().scale_width() - button_width_ - 10));
  edit_->left(2);
  edit_->top((surface().scale_height() - edit_->height()) / 2);
  label_->left(edit_->left());
  label_->top(edit_->top());
  label_->width(edit_->width());
  label_->height(edit_->height());
  InitialiseRect();
}

void kelBrowseButton::paint() {
  InitialiseRect();
  switch (button_state_) {
    case ButtonState::hover:
      setOver();
      break;
    case ButtonState::pressed:
      setDown();
      break;
    case ButtonState::normal:
      setOut();
      break;
  }
  edit_->enabled(Enabled());
}

void kelBrowseButton::mouse_down(Part part, std::int16_t button, Pointer at) {
  if (part == Part::surface) {
    const bool over = over_button(at);
    let_go_of_capture();
    pressing_ = over && button == mouse_button::left;
    if (over) {
      take_capture();
      track(at);
    }
  }
  if (button == mouse_button::right) InfoClick.raise();
}

void kelBrowseButton::mouse_move(Part part, std::int16_t held, Pointer at) {
  if (part != Part::surface) return;
  // A press whose release went to another window is over.
  if (!(held & mouse_button::left)) pressing_ = false;
  track(at);
}

void kelBrowseButton::mouse_up(Part part, std::int16_t button, Pointer at) {
  bool clicked = false;
  if (part == Part::surface && captured_) {
    track(at);
    clicked = button == mouse_button::left && pressing_ && over_button(at);
  } else if (part == Part::surface) {
    take_capture();
    setOver();
  }
  if (button == mouse_button::left) pressing_ = false;
  if (clicked) {
    setOut();
    let_go_of_capture();
    activate();
  }
  MouseUp.raise(button);
}

void kelBrowseButton::capture_lost() {
  captured_ = false;
  pressing_ = false;
  setOut();
}

void kelBrowseButton::key_down(Part part, std::int16_t& key_code, std::int16_t& shift) {
  if (part == Part::surface) KeyDown.raise(key_code, shift);
  if ((key_code == key::f4 && shift == 0) || (key_code == key::down && shift == key::alt)) activate();
}

void kelBrowseButton::key_up(Part part, std::int16_t& key_code, std::int16_t& shift) {
  if (part != Part::edit) return;
  const bool deleting = key_code == key::del;
  KeyUp.raise(key_code, shift);
  if (!deleting) return;
  raise_change_text();
  std::int16_t character = key::del;
  KeyPress.raise(character);
}

void kelBrowseButton::key_press(Part part, std::int16_t& character) {
  if (part != Part::edit) return;
  const bool entering = character == key::enter;
  KeyPress.raise(character);
  if (entering) raise_change_text();
}

void kelBrowseButton::text_changed() {
  Text(edit_->text());
  raise_change_text();
}

void kelBrowseButton::lost_focus() {
  paint();
  label_->caption(u"");
  label_->visible(false);
  edit_->visible(true);
}

void kelBrowseButton::activate() {
  if (!Enabled()) return;
  ControlClick.raise();
  OpenBrowse.raise();
}

void kelBrowseButton::changed(Index property) {
  host().property_changed(properties()[property].name);
}

void kelBrowseButton::show_border() {
  const std::int16_t appearance = surface().appearance();
  if (appearance == 0 || appearance == 1) surface().border_style(appearance);
  show_back_color();
}

void kelBrowseButton::show_back_color() {
  edit_->back_color(back_color_);
  surface().back_color(back_color_);
}

void kelBrowseButton::show_lock() {
  const bool is_locked = Locked();
  tornby::Font look = edit_->font();
  look.italic = is_locked;
  edit_->font(look);
  edit_->enabled(!is_locked);
}

void kelBrowseButton::raise_change_text() {
  String current = edit_->text();
  ChangeText.raise(current);
}

bool kelBrowseButton::over_button(Pointer at) const {
  return button_.contains(static_cast<std::int32_t>(std::lrint(at.x)), static_cast<std::int32_t>(std::lrint(at.y)));
}

void kelBrowseButton::track(Pointer at) {
  if (!over_button(at)) {
    setOut();
    let_go_of_capture();
    return;
  }
  if (!captured_) take_capture();
  if (pressing_) {
    setDown();
  } else {
    setOver();
  }
}

void kelBrowseButton::take_capture() {
  surface().set_capture();
  captured_ = true;
}

void kelBrowseButton::let_go_of_capture() {
  captured_ = false;
  surface().release_capture();
}

}  // namespace tornby
