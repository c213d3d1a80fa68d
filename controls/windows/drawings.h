// What a control has drawn on its surface, kept until it is painted, and for every further painting.
#pragma once

#include <variant>
#include <vector>

#include <tornby/controls/windows/gdi.h>

namespace tornby::windows {

class Canvas;

/// The system's last-error value after the latest of the calls that a control's users may ask it for; 0 for none.
class LastError {
 public:
  template <class Call>
  void of(Call call) {
    ::SetLastError(0);
    call();
    value_ = ::GetLastError();
  }
  DWORD value() const { return value_; }

 private:
  DWORD value_ = 0;
};

struct FocusRectangle {
  Rectangle area;
};
struct Edge {
  Rectangle area;
  UINT edge, flags;
};
struct Box {
  Rectangle outline;
  Color color;
};
struct PlacedGlyph {
  Glyph glyph;
  int left, top;
};

constexpr int browse_glyph_height = 2;

/// There is one drawing of each kind: a new one takes the place of the one before it, wherever that was, and comes to
/// the front.
class Drawings {
 public:
  using Drawing = std::variant<FocusRectangle, Edge, Box, PlacedGlyph>;

  void add(const Drawing& drawing);
  void clear() { drawings_.clear(); }
  /// `as_default` puts a frame round edges: that of the button which Enter presses.
  void paint(const Canvas& canvas, COLORREF ground, bool as_default, LastError& last_error) const;

 private:
  std::vector<Drawing> drawings_;  // in the order of drawing
};

}  // namespace tornby::windows
