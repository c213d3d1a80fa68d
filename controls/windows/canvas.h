// What a control is drawn with: fills, edges, texts, in the control's own pixels, on any device context.
#pragma once

#include "controls/windows/gdi.h"

namespace tornby::windows {

struct TextLine;

/// One pixel of the control is one unit of the device context, or as large as a rectangle of the target makes it: then
/// everything is drawn at the target's own resolution. The target's mapping is never touched, so that it may be any,
/// and the target a metafile of either kind.
class Canvas {
 public:
  /// Draws as large as the control is, on a window or in memory.
  explicit Canvas(HDC context) : context_(context) {}
  /// Draws a control of that size into `area`, in units of the context, which may count upwards.
  Canvas(HDC context, SIZE size, const RECT& area);

  HDC context() const { return context_; }
  /// The rectangle in units of the context.
  RECT target(const RECT& area) const;
  /// Moves everything drawn from now on, by pixels of the control.
  void move(int x, int y);
  /// Keeps within a rectangle what is drawn from now on.
  void clip(const RECT& area) const;

  void fill(const RECT& area, COLORREF color) const;
  /// An outline one pixel wide, inside the rectangle.
  void frame(const RECT& area, COLORREF top_left, COLORREF bottom_right) const;
  /// As the system's DrawEdge. False when the system could not.
  bool edge(const RECT& area, UINT edge, UINT flags) const;
  /// As the system's DrawFocusRect, on a ground of that colour. False when the system could not.
  bool focus_rectangle(const RECT& area, COLORREF ground) const;
  /// As the system's DrawText. `font` is the one in which `description` looks on the screen.
  void text(const String& text, const RECT& area, UINT format, const Font& description, int dots_per_inch, HFONT font,
            COLORREF color) const;

 private:
  LONG target_x(LONG x) const;
  LONG target_y(LONG y) const;
  /// Every character stands where it stands on the screen, whatever the widths of the target's own font, unless
  /// characters change places.
  void scaled_text(const String& text, const RECT& area, UINT format, const Font& description, int dots_per_inch,
                   HFONT screen_font) const;
  void placed_line(const TextLine& line, const RECT& area, LONG top, UINT format, LONG ascent) const;
  /// The system knows the order of characters and their forms; only the line as a whole stands where it does on the
  /// screen, and no mnemonic is marked.
  void reordered_line(const String& line, const RECT& area, LONG top, UINT format) const;

  HDC context_;
  bool exact_ = true;
  POINT origin_ = {0, 0};  // of the control, in the control's pixels
  double left_ = 0, top_ = 0;
  double scale_x_ = 1, scale_y_ = 1;
};

}  // namespace tornby::windows
