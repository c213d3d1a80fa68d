#include "controls/kelHyperLabel.h"

#include <cmath>
#include <string>

#include "base/variant.h"

namespace tornby {
namespace {

constexpr Color link_color_when_reading = 0xD54600;
constexpr Color link_color_when_writing = 0x008000;
constexpr StringView placeholder = u"HyperLabel";
constexpr StringView hover_mark = u"1";

double twips_of_himetric(std::int32_t length) {
  return std::trunc(length * 1440.0 / 2540.0);
}

}  // namespace

// In the order of reading.
enum kelHyperLabel::Index : std::size_t {
  caption,
  back_color,
  font,
  alignment,
  click_color,
  link_color,
  hover_color,
  picture,
  use_dynamic_height
};

std::span<const Property<kelHyperLabel>> kelHyperLabel::properties() {
  using Value = PropertyValue;
  using Host = ControlHost;
  static constexpr Property<kelHyperLabel> table[] = {
      {u"Caption", PropertyKind::text, [](const Host& host) { return Value(host.display_name()); },
       [](const kelHyperLabel& c) { return Value(c.Caption()); },
       [](kelHyperLabel& c, const Value& v) { c.Caption(std::get<String>(v)); }},
      {u"BackColor", PropertyKind::color, [](const Host&) { return Value(system_color::button_face); },
       [](const kelHyperLabel& c) { return Value(c.BackColor()); },
       [](kelHyperLabel& c, const Value& v) { c.surface().back_color(std::get<Color>(v)); }},
      {u"Font", PropertyKind::font, [](const Host& host) { return Value(host.ambient_font()); },
       [](const kelHyperLabel& c) { return Value(c.Font()); },
       [](kelHyperLabel& c, const Value& v) { c.label_->font(std::get<tornby::Font>(v)); }},
      {u"Alignment", PropertyKind::int16, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelHyperLabel& c) { return Value(c.Alignment()); },
       [](kelHyperLabel& c, const Value& v) { c.label_->alignment(std::get<std::int16_t>(v)); }},
      {u"ClickColor", PropertyKind::color, [](const Host&) { return Value(Color{255}); },
       [](const kelHyperLabel& c) { return Value(c.click_color_); },
       [](kelHyperLabel& c, const Value& v) { c.click_color_ = std::get<Color>(v); }},
      {u"LinkColor", PropertyKind::color, [](const Host&) { return Value(link_color_when_reading); },
       [](const kelHyperLabel& c) { return Value(c.LinkColor()); },
       [](kelHyperLabel& c, const Value& v) { c.label_->fore_color(std::get<Color>(v)); },
       [](const Host&) { return Value(link_color_when_writing); }},
      {u"HoverColor", PropertyKind::color, [](const Host&) { return Value(system_color::button_shadow); },
       [](const kelHyperLabel& c) { return Value(c.hover_color_); },
       [](kelHyperLabel& c, const Value& v) { c.hover_color_ = std::get<Color>(v); }},
      {u"Picture", PropertyKind::picture, [](const Host&) { return Value(PicturePointer()); },
       [](const kelHyperLabel& c) { return Value(c.picture_); },
       [](kelHyperLabel& c, const Value& v) { c.picture_ = std::get<PicturePointer>(v); }},
      {u"UseDynamicHeight", PropertyKind::boolean, [](const Host&) { return Value(std::int16_t{0}); },
       [](const kelHyperLabel& c) { return Value(c.use_dynamic_height_); },
       [](kelHyperLabel& c, const Value& v) { c.use_dynamic_height_ = std::get<bool>(v); }},
  };
  return table;
}

kelHyperLabel::kelHyperLabel(ControlHost& host) : Control(host), label_(host.add_label()), image_(host.add_picture()) {
  label_->caption(placeholder);
  label_->fore_color(link_color_when_reading);
  image_->visible(false);
}

void kelHyperLabel::UseDynamicHeight(bool value) {
  use_dynamic_height_ = value;
  label_->word_wrap(value);
  label_->auto_size(value);
  resize();
  changed(use_dynamic_height);
}

String kelHyperLabel::Caption() const {
  if (label_->caption().starts_with(placeholder)) label_->caption(host().display_name());
  return label_->caption();
}

void kelHyperLabel::Caption(StringView value) {
  label_->caption(value);
  resize();
}

Color kelHyperLabel::BackColor() const {
  return surface().back_color();
}

void kelHyperLabel::BackColor(Color value) {
  surface().back_color(value);
  changed(back_color);
}

tornby::Font kelHyperLabel::Font() const {
  return label_->font();
}

void kelHyperLabel::Font(const tornby::Font& value) {
  label_->font(value);
  make_caption_one_line_high();
  changed(font);
}

std::int16_t kelHyperLabel::Alignment() const {
  return label_->alignment();
}

void kelHyperLabel::Alignment(std::int16_t value) {
  label_->alignment(value);
  changed(alignment);
  resize();
}

void kelHyperLabel::ClickColor(Color value) {
  click_color_ = value;
  changed(click_color);
}

Color kelHyperLabel::LinkColor() const {
  return label_->fore_color();
}

void kelHyperLabel::LinkColor(Color value) {
  label_->fore_color(value);
  changed(link_color);
}

void kelHyperLabel::HoverColor(Color value) {
  hover_color_ = value;
  changed(hover_color);
}

void kelHyperLabel::Picture(const PicturePointer& value) {
  picture_ = value;
  image_->picture(value);
  changed(picture);
  resize();
}

void kelHyperLabel::InitProperties() {
  click_color_ = 255;
  hover_color_ = system_color::button_shadow;
  picture_ = nullptr;
  use_dynamic_height_ = false;
  label_->font(host().ambient_font());
  if (const auto color = host().ambient_back_color()) surface().back_color(*color);
  if (host().right_to_left()) label_->alignment(1);
  make_caption_one_line_high();
}

void kelHyperLabel::follow(const Ambients& before, const Ambients& now) {
  if (goes_along(BackColor(), before.back_color, now.back_color)) BackColor(*now.back_color);
  if (!goes_along(Font(), before.font, now.font)) return;
  Font(*now.font);
  resize();
}

void kelHyperLabel::ReadProperties(const PropertyBag& bag) {
  read_properties(*this, host(), bag, properties());
  image_->picture(picture_);
  label_->word_wrap(use_dynamic_height_);
  label_->auto_size(use_dynamic_height_);
  make_caption_one_line_high();
  resize();
}

void kelHyperLabel::WriteProperties(PropertyBag& bag) const {
  for (const Index property :
       {caption, back_color, font, alignment, click_color, use_dynamic_height, link_color, hover_color, picture}) {
    write_property(*this, host(), bag, properties()[property]);
  }
}

void kelHyperLabel::resize() {
  if (!picture_) {
    follow_caption_height();
    label_->left(0);
    label_->top(0);
    label_->width(surface().scale_width());
    if (use_dynamic_height_) follow_caption_height();  // another width may wrap into another height
  } else {
    place_picture();
  }
  image_->visible(picture_ != nullptr);
  label_->visible(picture_ == nullptr);
}

void kelHyperLabel::follow_caption_height() {
  surface().height(label_->height() * surface().twips_per_pixel_y());
}

void kelHyperLabel::place_picture() {
  const double width = twips_of_himetric(picture_->width()) / surface().twips_per_pixel_x();
  surface().height(twips_of_himetric(picture_->height()));
  switch (label_->alignment()) {
    case 0:
      image_->left(0);
      break;
    case 1:
      image_->left(surface().scale_width() - width);
      break;
    case 2:
      image_->left(surface().scale_width() / 2 - width / 2);
      break;
    default:
      break;
  }
}

void kelHyperLabel::mouse_down(Part part, std::int16_t button, Pointer) {
  if (button == mouse_button::left) {
    pressed_ = true;
    if (part != Part::picture) label_->fore_color(click_color_);
  }
  if (button == mouse_button::right) InfoClick.raise();
}

void kelHyperLabel::mouse_move(Part part, std::int16_t held, Pointer at) {
  // A press whose release went to another window is over.
  if (!(held & mouse_button::left)) pressed_ = false;
  if (part == Part::picture) at = {at.x + image_->left(), at.y + image_->top()};
  if (!hovering() && (!picture_ || inside_picture(at))) start_hover();
  if (hovering() && (picture_ ? !inside_picture(at) : outside(at))) {
    surface().release_capture();
    end_hover();
  }
}

void kelHyperLabel::mouse_up(Part part, std::int16_t button, Pointer) {
  if (button == mouse_button::left) {
    if (part != Part::picture) label_->fore_color(LinkColor());
    if (pressed_) {
      pressed_ = false;
      Click.raise();
    }
  }
  MouseUp.raise(button);
}

void kelHyperLabel::capture_lost() {
  pressed_ = false;
  if (hovering()) end_hover();
}

void kelHyperLabel::key_down(Part, std::int16_t& key_code, std::int16_t& shift) {
  if ((key_code == key::enter || key_code == key::space) && shift == 0) activate();
}

void kelHyperLabel::changed(Index property) {
  host().property_changed(properties()[property].name);
}

void kelHyperLabel::make_caption_one_line_high() {
  if (use_dynamic_height_) return;
  surface().font(label_->font());
  label_->height(surface().text_height(u"X"));
}

bool kelHyperLabel::hovering() const {
  return surface().tag() == hover_mark;
}

bool kelHyperLabel::inside_picture(Pointer at) const {
  // Downwards it counts from the surface's top, not from the picture's.
  return at.x >= image_->left() && at.x <= image_->left() + image_->width() && at.y >= 0 && at.y <= image_->height();
}

bool kelHyperLabel::outside(Pointer at) const {
  // The height bounds both directions.
  const double bound = surface().height();
  return at.x < 0 || at.y < 0 || at.x * surface().twips_per_pixel_x() > bound ||
         at.y * surface().twips_per_pixel_y() > bound;
}

void kelHyperLabel::start_hover() {
  surface().set_capture();
  surface().tag(hover_mark);
  if (!picture_) {
    label_->tag(widen(std::to_string(static_cast<std::int32_t>(label_->fore_color()))));
    label_->fore_color(hover_color_);  // after the tag, without which the colour would not come back
  }
  surface().show_hand();
}

void kelHyperLabel::end_hover() {
  // By the mark and not by the mode, which may have changed since.
  if (!label_->tag().empty()) {
    label_->fore_color(static_cast<Color>(to_int32(label_->tag())));
    label_->tag(u"");
  }
  surface().tag(u"");
}

}  // namespace tornby
