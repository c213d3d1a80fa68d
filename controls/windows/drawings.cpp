#include "controls/windows/drawings.h"

#include "controls/windows/canvas.h"

namespace tornby::windows {
namespace {

struct Painter {
  const Canvas& canvas;
  COLORREF ground;
  bool as_default;
  LastError& last_error;

  void operator()(const FocusRectangle& frame) const {
    last_error.of([&] { canvas.focus_rectangle(to_rect(frame.area), ground); });
  }
  void operator()(const Edge& edge) const {
    last_error.of([&] { canvas.edge(to_rect(edge.area), edge.edge, edge.flags); });
    const COLORREF line = ::GetSysColor(COLOR_BTNTEXT);
    if (as_default) canvas.frame(to_rect(edge.area), line, line);
  }
  void operator()(const Box& box) const {
    const COLORREF color = resolved(box.color);
    canvas.frame({box.outline.left, box.outline.top, box.outline.right + 1, box.outline.bottom + 1}, color, color);
  }
  /// Three dots. The greyed ones have a light shadow.
  void operator()(const PlacedGlyph& placed) const {
    if (placed.glyph == Glyph::browse) {
      draw_dots(placed, 0, legible(::GetSysColor(COLOR_BTNTEXT), ground, COLOR_BTNTEXT));
    } else {
      draw_dots(placed, 1, ::GetSysColor(COLOR_BTNHIGHLIGHT));
      draw_dots(placed, 0, ::GetSysColor(COLOR_GRAYTEXT));
    }
  }
  void draw_dots(const PlacedGlyph& placed, int offset, COLORREF color) const {
    const int top = placed.top + offset;
    for (const int x : {1, 5, 9}) {
      const int left = placed.left + x + offset;
      canvas.fill({left, top, left + 2, top + browse_glyph_height}, color);
    }
  }
};

}  // namespace

void Drawings::add(const Drawing& drawing) {
  std::erase_if(drawings_, [&](const Drawing& other) { return other.index() == drawing.index(); });
  drawings_.push_back(drawing);
}

void Drawings::paint(const Canvas& canvas, COLORREF ground, bool as_default, LastError& last_error) const {
  for (const Drawing& drawing : drawings_) std::visit(Painter{canvas, ground, as_default, last_error}, drawing);
}

}  // namespace tornby::windows
