#include "controls/windows/canvas.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "controls/mnemonic.h"
#include "controls/windows/text_lines.h"

namespace tornby::windows {
namespace {

/// The colours of one ring of an edge.
struct Ring {
  int top_left, bottom_right;
};

Ring outer_ring(UINT edge, UINT flags) {
  if (flags & BF_FLAT) return {COLOR_3DSHADOW, COLOR_3DSHADOW};
  return edge & BDR_RAISEDOUTER ? Ring{COLOR_3DLIGHT, COLOR_3DDKSHADOW} : Ring{COLOR_3DSHADOW, COLOR_3DHIGHLIGHT};
}

Ring inner_ring(UINT edge, UINT flags) {
  if (flags & BF_FLAT) return {COLOR_3DFACE, COLOR_3DFACE};
  return edge & BDR_RAISEDINNER ? Ring{COLOR_3DHIGHLIGHT, COLOR_3DSHADOW} : Ring{COLOR_3DDKSHADOW, COLOR_3DLIGHT};
}

/// Whether characters change places when the line is drawn.
bool is_reordered(const String& line, UINT format) {
  if (format & DT_RTLREADING) return true;
  std::vector<WORD> kinds(line.size());
  ::GetStringTypeW(CT_CTYPE2, wide(line), static_cast<int>(line.size()), kinds.data());
  return std::find(kinds.begin(), kinds.end(), C2_RIGHTTOLEFT) != kinds.end();
}

}  // namespace

Canvas::Canvas(HDC context, SIZE size, const RECT& area)
    : context_(context),
      exact_(false),
      left_(area.left),
      top_(area.top),
      scale_x_(static_cast<double>(area.right - area.left) / static_cast<double>(size.cx)),
      scale_y_(static_cast<double>(area.bottom - area.top) / static_cast<double>(size.cy)) {}

LONG Canvas::target_x(LONG x) const {
  return static_cast<LONG>(std::lround(left_ + static_cast<double>(origin_.x + x) * scale_x_));
}

LONG Canvas::target_y(LONG y) const {
  return static_cast<LONG>(std::lround(top_ + static_cast<double>(origin_.y + y) * scale_y_));
}

RECT Canvas::target(const RECT& area) const {
  return {target_x(area.left), target_y(area.top), target_x(area.right), target_y(area.bottom)};
}

void Canvas::move(int x, int y) {
  origin_ = {origin_.x + x, origin_.y + y};
}

void Canvas::clip(const RECT& area) const {
  const RECT within = target(area);
  ::IntersectClipRect(context_, within.left, within.top, within.right, within.bottom);
}

void Canvas::fill(const RECT& area, COLORREF color) const {
  const RECT place = target(area);
  const GdiObject<HBRUSH> brush(::CreateSolidBrush(color));
  ::FillRect(context_, &place, brush.get());
}

void Canvas::frame(const RECT& area, COLORREF top_left, COLORREF bottom_right) const {
  fill({area.left, area.bottom - 1, area.right, area.bottom}, bottom_right);
  fill({area.right - 1, area.top, area.right, area.bottom}, bottom_right);
  fill({area.left, area.top, area.right - 1, area.top + 1}, top_left);
  fill({area.left, area.top, area.left + 1, area.bottom - 1}, top_left);
}

bool Canvas::edge(const RECT& area, UINT edge, UINT flags) const {
  RECT place = area;
  if (exact_) return ::DrawEdge(context_, &place, edge, flags) != FALSE;
  for (const Ring ring : {outer_ring(edge, flags), inner_ring(edge, flags)}) {
    frame(place, ::GetSysColor(ring.top_left), ::GetSysColor(ring.bottom_right));
    ::InflateRect(&place, -1, -1);
  }
  return true;
}

bool Canvas::focus_rectangle(const RECT& area, COLORREF ground) const {
  if (exact_) {
    ::SetTextColor(context_, 0);
    ::SetBkColor(context_, 0xFFFFFF);
    return ::DrawFocusRect(context_, &area) != FALSE;
  }
  const GdiObject<HBRUSH> brush(::CreateSolidBrush(~ground & 0xFFFFFF));
  const Selection selection(context_, brush.get());
  bool drawn = true;
  const auto dot = [&](LONG x, LONG y) {
    if ((x + y) % 2 != 0) return;
    const RECT place = target({x, y, x + 1, y + 1});
    drawn &=
        ::PatBlt(context_, place.left, place.top, place.right - place.left, place.bottom - place.top, PATCOPY) != 0;
  };
  for (LONG x = area.left; x < area.right; ++x) dot(x, area.top), dot(x, area.bottom - 1);
  for (LONG y = area.top + 1; y < area.bottom - 1; ++y) dot(area.left, y), dot(area.right - 1, y);
  return drawn;
}

void Canvas::text(const String& text, const RECT& area, UINT format, const Font& description, int dots_per_inch,
                  HFONT font, COLORREF color) const {
  const int mode = ::SetBkMode(context_, TRANSPARENT);
  const COLORREF color_before = ::SetTextColor(context_, color);
  if (exact_) {
    const Selection selection(context_, font);
    RECT place = area;
    draw_text(context_, text, place, format);
  } else {
    scaled_text(text, area, format, description, dots_per_inch, font);
  }
  ::SetTextColor(context_, color_before);
  ::SetBkMode(context_, mode);
}

void Canvas::scaled_text(const String& text, const RECT& area, UINT format, const Font& description, int dots_per_inch,
                         HFONT screen_font) const {
  const TEXTMETRICW metrics = text_metrics(screen_font);
  const double height = description.size * dots_per_inch / 72 * std::fabs(scale_y_);
  const bool stretched = std::fabs(std::fabs(scale_x_) - std::fabs(scale_y_)) > 0.01 * std::fabs(scale_y_);
  const double width = stretched ? metrics.tmAveCharWidth * std::fabs(scale_x_) : 0;
  const GdiObject<HFONT> font =
      make_font(description, SIZE{static_cast<LONG>(std::lround(width)), static_cast<LONG>(std::lround(height))});
  const Selection selection(context_, font.get());

  LONG top = area.top;
  for (const TextLine& line : text_lines(screen_font, text, area.right - area.left, format)) {
    if (is_reordered(line.text, format)) {
      reordered_line(line.text, area, top, format);
    } else {
      placed_line(line, area, top, format, metrics.tmAscent);
    }
    top += metrics.tmHeight;
  }
}

void Canvas::placed_line(const TextLine& line, const RECT& area, LONG top, UINT format, LONG ascent) const {
  const LONG slack = area.right - area.left - line.width();
  const LONG left = area.left + (format & DT_RIGHT ? slack : format & DT_CENTER ? slack / 2 : 0);
  std::vector<INT> advances;
  LONG before = target_x(left);
  for (const int end : line.ends) {
    const LONG after = target_x(left + end);
    advances.push_back(std::abs(after - before));
    before = after;
  }
  ::ExtTextOutW(context_, target_x(left), target_y(top), 0, nullptr, wide(line.text),
                static_cast<UINT>(line.text.size()), advances.data());
  if (line.marked >= line.text.size()) return;
  const LONG start = line.marked == 0 ? 0 : line.ends[line.marked - 1];
  const LONG base = top + ascent;
  fill({left + start, base + 1, left + line.ends[line.marked], base + 2}, ::GetTextColor(context_));
}

void Canvas::reordered_line(const String& line, const RECT& area, LONG top, UINT format) const {
  const bool right = (format & DT_RIGHT) != 0, centre = (format & DT_CENTER) != 0;
  const LONG x = right ? area.right : centre ? (area.left + area.right) / 2 : area.left;
  const UINT before = ::SetTextAlign(context_, TA_TOP | (right ? TA_RIGHT : centre ? TA_CENTER : TA_LEFT));
  ::ExtTextOutW(context_, target_x(x), target_y(top), format & DT_RTLREADING ? ETO_RTLREADING : 0, nullptr, wide(line),
                static_cast<UINT>(line.size()), nullptr);
  ::SetTextAlign(context_, before);
}

}  // namespace tornby::windows
