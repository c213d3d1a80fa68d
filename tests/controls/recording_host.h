// A host without windows: it keeps what a control sets, and writes down what it does, in one list with the events.
//
// The client area is the outer size less one pixel a side for a border. A character is 6 pixels wide and 13 high, a
// pixel 15 twips wide and 12 high.
#pragma once

#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "controls/control.h"

namespace tornby::testing {

using Log = std::vector<std::string>;

/// ASCII text for a log.
inline std::string plain(StringView text) {
  return std::string(text.begin(), text.end());
}

inline std::string plain(const Rectangle& area) {
  std::ostringstream text;
  text << area.left << ',' << area.top << ',' << area.right << ',' << area.bottom;
  return text.str();
}

inline constexpr double character_width = 6;
inline constexpr double character_height = 13;

/// A property that is kept in the member of its name with an underscore.
#define KEPT(type, argument, name)     \
  type name() const override {         \
    return name##_;                    \
  }                                    \
  void name(argument value) override { \
    name##_ = value;                   \
  }

template <class Base>
class Placed : public Base {
 public:
  KEPT(double, double, left)
  KEPT(double, double, top)
  KEPT(double, double, width)
  KEPT(double, double, height)
  KEPT(bool, bool, visible)

 protected:
  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;
  bool visible_ = true;
};

class RecordingLabel final : public Placed<LabelElement> {
 public:
  String caption() const override { return caption_; }
  void caption(StringView value) override { caption_ = value, fit(); }
  KEPT(Font, const Font&, font)
  KEPT(Color, Color, fore_color)
  KEPT(std::int16_t, std::int16_t, alignment)
  bool auto_size() const override { return auto_size_; }
  void auto_size(bool value) override { auto_size_ = value, fit(); }
  bool word_wrap() const override { return word_wrap_; }
  void word_wrap(bool value) override { word_wrap_ = value, fit(); }
  KEPT(bool, bool, enabled)
  KEPT(String, StringView, tag)
  using Placed::width;
  void width(double value) override { width_ = value, fit(); }

 private:
  void fit() {
    if (!auto_size_) return;
    const double length = character_width * static_cast<double>(caption_.size());
    if (!word_wrap_) width_ = length;
    int lines = 1;
    while (word_wrap_ && width_ > 0 && lines * width_ < length) ++lines;
    height_ = lines * character_height;
  }

  String caption_, tag_;
  Font font_;
  Color fore_color_ = 0;
  std::int16_t alignment_ = 0;
  bool auto_size_ = false, word_wrap_ = false, enabled_ = true;
};

class RecordingPicture final : public Placed<PictureElement> {
 public:
  void picture(const PicturePointer& value) override {
    shown = value;
    width_ = value ? value->width() * 96 / 2540.0 : 0;
    height_ = value ? value->height() * 96 / 2540.0 : 0;
  }

  PicturePointer shown;
};

class RecordingEdit final : public Placed<EditElement> {
 public:
  using Placed::height;
  void height(double value) override { height_ = value < 15 ? 15 : value; }
  String text() const override { return text_; }
  void text(StringView value) override {
    if (text_ == value) return;
    text_ = value;
    if (control) control->text_changed();
  }
  KEPT(Font, const Font&, font)
  KEPT(Color, Color, back_color)
  KEPT(bool, bool, enabled)
  KEPT(bool, bool, locked)
  KEPT(std::int32_t, std::int32_t, max_length)

  Control* control = nullptr;

 private:
  String text_;
  Font font_;
  Color back_color_ = 0;
  bool enabled_ = true, locked_ = false;
  std::int32_t max_length_ = 0;
};

class RecordingDropDown final : public DropDownElement {
 public:
  std::int32_t button_width() const override { return 17; }
};

class RecordingElement final : public ContainedElement {
 public:
  void move(double left, double top, double width, double height) override {
    place = {static_cast<std::int32_t>(left), static_cast<std::int32_t>(top), static_cast<std::int32_t>(width),
             static_cast<std::int32_t>(height)};
  }

  Rectangle place{-1, -1, -1, -1};
};

class RecordingHost final : public ControlHost, public Surface {
 public:
  Log log;
  RecordingLabel* label = nullptr;
  RecordingPicture* picture = nullptr;
  RecordingEdit* edit = nullptr;
  std::vector<ContainedElement*> contained;
  Font ambient{.name = u"Ambient"};

  /// What was written down since the last call.
  Log take() { return std::exchange(log, {}); }
  void note(std::string text) { log.push_back(std::move(text)); }

  Surface& surface() override { return *this; }
  std::unique_ptr<LabelElement> add_label() override { return keep<RecordingLabel>(label); }
  std::unique_ptr<PictureElement> add_picture() override { return keep<RecordingPicture>(picture); }
  std::unique_ptr<EditElement> add_edit() override { return keep<RecordingEdit>(edit); }
  std::unique_ptr<DropDownElement> add_drop_down() override { return std::make_unique<RecordingDropDown>(); }
  void property_changed(StringView name) override { note("changed " + plain(name)); }
  Font ambient_font() const override { return ambient; }
  String display_name() const override { return u"Link7"; }

  double scale_width() const override { return width_ / 15 - 2 * border_style_; }
  double scale_height() const override { return height_ / 12 - 2 * border_style_; }
  Rectangle client_rectangle() const override {
    return {0, 0, static_cast<std::int32_t>(scale_width()), static_cast<std::int32_t>(scale_height())};
  }
  double width() const override { return width_; }
  void width(double twips) override { width_ = twips; }
  double height() const override { return height_; }
  void height(double twips) override { height_ = twips; }
  double twips_per_pixel_x() const override { return 15; }
  double twips_per_pixel_y() const override { return 12; }
  KEPT(Color, Color, back_color)
  KEPT(bool, bool, enabled)
  std::int16_t border_style() const override { return border_style_; }
  void border_style(std::int16_t value) override {
    border_style_ = value;
    note("border " + std::to_string(value));
  }
  KEPT(std::int16_t, std::int16_t, appearance)
  KEPT(Font, const Font&, font)
  double text_height(StringView) const override { return character_height; }
  KEPT(String, StringView, tag)
  void clear() override { note("clear"); }
  void draw_focus_rectangle(const Rectangle& area) override { note("frame " + plain(area)); }
  void draw_edge(const Rectangle& area, std::uint32_t edge, std::uint32_t flags) override {
    note("edge " + plain(area) + " " + std::to_string(edge) + " " + std::to_string(flags));
  }
  void draw_box(const Rectangle& outline, Color color) override {
    note("box " + plain(outline) + (color == system_color::button_face ? "" : " in another colour"));
  }
  void draw_glyph(Glyph glyph, double left, double top) override {
    note((glyph == Glyph::browse ? "glyph " : "grey ") + std::to_string(static_cast<int>(left)) + "," +
         std::to_string(static_cast<int>(top)));
  }
  double glyph_height(Glyph) const override { return 8; }
  void set_capture() override { note("capture"); }
  void release_capture() override { note("release"); }
  void show_hand() override { note("hand"); }
  std::vector<ContainedElement*> contained_elements() override { return contained; }

 private:
  template <class T>
  static std::unique_ptr<T> keep(T*& place) {
    auto made = std::make_unique<T>();
    place = made.get();
    return made;
  }

  double width_ = 1500, height_ = 480;  // 100 by 40 pixels
  Color back_color_ = system_color::button_face;
  bool enabled_ = true;
  std::int16_t border_style_ = 0, appearance_ = 1;
  Font font_;
  String tag_;
};

/// A property bag in memory that also remembers in which order it was asked and filled.
class MemoryBag final : public PropertyBag {
 public:
  std::map<String, PropertyValue> values;
  mutable Log read_order;
  Log written;

 private:
  std::optional<PropertyValue> find(StringView name, PropertyKind) const override {
    read_order.push_back(plain(name));
    const auto found = values.find(String(name));
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  void store(StringView name, const PropertyValue& value) override {
    written.push_back(plain(name));
    values[String(name)] = value;
  }
};

class FixedPicture final : public Picture {
 public:
  FixedPicture(std::int32_t width, std::int32_t height) : width_(width), height_(height) {}
  std::int32_t width() const override { return width_; }
  std::int32_t height() const override { return height_; }

 private:
  std::int32_t width_, height_;
};

}  // namespace tornby::testing
