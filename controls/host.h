// What a control needs from the form that hosts it: a surface to draw on, inner elements, and news for the form.
//
// A control is plain code over these interfaces; it never sees a window. A host creates the control over itself and
// then tells it what happens through the functions of controls/control.h. Positions and sizes are pixels of the
// surface's client area unless a member says twips; they may be fractions. A host whose window is gone ignores calls
// that change something and answers the others with what it knew last, because a control may be destroyed inside its
// own event.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <tornby/controls/property_bag.h>
#include <tornby/controls/values.h>

namespace tornby {

struct Rectangle {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;   ///< exclusive
  std::int32_t bottom = 0;  ///< exclusive

  bool contains(std::int32_t x, std::int32_t y) const { return x >= left && x < right && y >= top && y < bottom; }
  bool operator==(const Rectangle&) const = default;
};

/// An element that the form has placed inside a control, which then acts as its container.
class ContainedElement {
 public:
  virtual ~ContainedElement() = default;
  /// All four in twips.
  virtual void move(double left, double top, double width, double height) = 0;
};

/// The glyphs of a browse button; how they look is the host's.
enum class Glyph { browse, browse_greyed };

/// A control's own window or area. What is drawn on it stays until it is cleared or has another size or border, or the
/// next drawing of the same kind takes its place.
class Surface {
 public:
  virtual ~Surface() = default;

  virtual double scale_width() const = 0;  ///< the client area
  virtual double scale_height() const = 0;
  virtual Rectangle client_rectangle() const = 0;
  /// The outer size, borders included, in twips. A write that changes the size makes the host call Control::resize,
  /// before it returns or later; a form may refuse it.
  virtual double width() const = 0;
  virtual void width(double twips) = 0;
  virtual double height() const = 0;
  virtual void height(double twips) = 0;
  virtual double twips_per_pixel_x() const = 0;
  virtual double twips_per_pixel_y() const = 0;

  virtual Color back_color() const = 0;
  virtual void back_color(Color value) = 0;
  virtual bool enabled() const = 0;
  virtual void enabled(bool value) = 0;
  virtual std::int16_t border_style() const = 0;  ///< 0 none, 1 single line
  virtual void border_style(std::int16_t value) = 0;
  virtual std::int16_t appearance() const = 0;  ///< 0 flat, 1 three-dimensional; other numbers are kept
  virtual void appearance(std::int16_t value) = 0;
  virtual Font font() const = 0;  ///< what text_height measures with
  virtual void font(const Font& value) = 0;
  virtual double text_height(StringView text) const = 0;
  virtual String tag() const = 0;  ///< free text for the control's own use
  virtual void tag(StringView value) = 0;

  virtual void clear() = 0;
  virtual void draw_focus_rectangle(const Rectangle& area) = 0;
  /// The edge of a button; the host marks the one that the form displays as its default. The edge and flag numbers are
  /// those of the system's DrawEdge.
  virtual void draw_edge(const Rectangle& area, std::uint32_t edge, std::uint32_t flags) = 0;
  /// An outline one pixel wide, its right and bottom lines at `right` and `bottom`.
  virtual void draw_box(const Rectangle& outline, Color color) = 0;
  virtual void draw_glyph(Glyph glyph, double left, double top) = 0;
  virtual double glyph_height(Glyph glyph) const = 0;

  /// While a control holds the capture, pointer input from outside reaches it too, as input of the surface. When the
  /// capture goes to somebody else, the host calls Control::capture_lost; it does not for release_capture.
  virtual void set_capture() = 0;
  virtual void release_capture() = 0;
  /// The hand pointer, until the next move without it.
  virtual void show_hand() = 0;

  virtual std::vector<ContainedElement*> contained_elements() = 0;
};

/// Something that a control places on its surface. A new one is visible and enabled, at 0, 0.
class Element {
 public:
  virtual ~Element() = default;
  virtual double left() const = 0;
  virtual void left(double value) = 0;
  virtual double top() const = 0;
  virtual void top(double value) = 0;
  virtual double width() const = 0;
  virtual void width(double value) = 0;
  virtual double height() const = 0;
  virtual void height(double value) = 0;
  virtual bool visible() const = 0;
  virtual void visible(bool value) = 0;
};

/// A plain caption. With AutoSize it is always as large as its text: the width follows too, unless it wraps.
class LabelElement : public Element {
 public:
  virtual String caption() const = 0;
  virtual void caption(StringView value) = 0;
  virtual Font font() const = 0;
  virtual void font(const Font& value) = 0;
  virtual Color fore_color() const = 0;
  virtual void fore_color(Color value) = 0;
  virtual std::int16_t alignment() const = 0;  ///< 0 left, 1 right, 2 centre; other numbers are kept
  virtual void alignment(std::int16_t value) = 0;
  virtual bool auto_size() const = 0;
  virtual void auto_size(bool value) = 0;
  virtual bool word_wrap() const = 0;
  virtual void word_wrap(bool value) = 0;
  virtual bool enabled() const = 0;
  virtual void enabled(bool value) = 0;
  virtual String tag() const = 0;  ///< free text for the control's own use
  virtual void tag(StringView value) = 0;
};

/// Shows a picture in its own size, which becomes the element's size.
class PictureElement : public Element {
 public:
  virtual void picture(const PicturePointer& value) = 0;
};

/// An edit field of one line, never lower than its font needs.
class EditElement : public Element {
 public:
  virtual String text() const = 0;
  virtual void text(StringView value) = 0;  ///< a change makes the host call Control::text_changed
  virtual Font font() const = 0;
  virtual void font(const Font& value) = 0;
  virtual Color back_color() const = 0;
  virtual void back_color(Color value) = 0;
  virtual bool enabled() const = 0;
  virtual void enabled(bool value) = 0;
  virtual bool locked() const = 0;  ///< the user cannot change the text
  virtual void locked(bool value) = 0;
  virtual std::int32_t max_length() const = 0;  ///< in characters; 0 is no limit. The user's typing is limited only.
  virtual void max_length(std::int32_t value) = 0;
};

/// A drop-down field that is never seen.
class DropDownElement {
 public:
  virtual ~DropDownElement() = default;
  virtual std::int32_t button_width() const = 0;
};

/// What a form offers its controls; nothing where it has nothing to say.
struct Ambients {
  std::optional<Font> font;
  std::optional<Color> back_color;
  std::optional<Color> fore_color;
  std::optional<std::int16_t> appearance;  ///< 0 flat, 1 three-dimensional
};

/// One control's place on a form. It outlives its control.
class ControlHost {
 public:
  virtual ~ControlHost() = default;

  virtual Surface& surface() = 0;
  /// Elements stand in the order of their making, the last one in front. They belong to the control.
  virtual std::unique_ptr<LabelElement> add_label() = 0;
  virtual std::unique_ptr<PictureElement> add_picture() = 0;
  virtual std::unique_ptr<EditElement> add_edit() = 0;
  virtual std::unique_ptr<DropDownElement> add_drop_down() = 0;

  /// The named property changed: the stored settings are out of date.
  virtual void property_changed(StringView name) = 0;
  virtual Font ambient_font() const = 0;
  /// For new controls.
  virtual std::optional<Color> ambient_back_color() const { return std::nullopt; }
  virtual std::optional<Color> ambient_fore_color() const { return std::nullopt; }
  virtual std::optional<std::int16_t> ambient_appearance() const { return std::nullopt; }
  /// The form is for a script that is written from right to left. The host draws texts so; where they stand is the
  /// control's.
  virtual bool right_to_left() const { return false; }
  /// The name of this control on its form.
  virtual String display_name() const = 0;
};

}  // namespace tornby
