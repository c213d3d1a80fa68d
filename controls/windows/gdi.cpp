#include "controls/windows/gdi.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/code_page.h"

namespace tornby::windows {

BufferedPainting::BufferedPainting(HDC target, const RECT& area)
    : target_(target), area_(area), memory_(::CreateCompatibleDC(target)) {
  if (!memory_) return;
  bitmap_ = GdiObject<HBITMAP>(::CreateCompatibleBitmap(target, area.right - area.left, area.bottom - area.top));
  if (!bitmap_.get()) {
    ::DeleteDC(std::exchange(memory_, nullptr));
    return;
  }
  before_ = ::SelectObject(memory_, bitmap_.get());
  ::SetWindowOrgEx(memory_, area.left, area.top, nullptr);
}

BufferedPainting::~BufferedPainting() {
  if (!memory_) return;
  ::BitBlt(target_, area_.left, area_.top, area_.right - area_.left, area_.bottom - area_.top, memory_, area_.left,
           area_.top, SRCCOPY);
  ::SelectObject(memory_, before_);
  ::DeleteDC(memory_);
}

COLORREF resolved(Color color) {
  return color & 0x80000000 ? ::GetSysColor(static_cast<int>(color & 0xFF)) : color & 0xFFFFFF;
}

void fill(HDC context, const RECT& area, Color color) {
  const GdiObject<HBRUSH> brush(::CreateSolidBrush(resolved(color)));
  ::FillRect(context, &area, brush.get());
}

GdiObject<HFONT> make_font(const Font& font, int dots_per_inch) {
  LOGFONTW description{};
  description.lfHeight = -static_cast<LONG>(std::lround(font.size * dots_per_inch / 72));
  description.lfWeight = font.weight;
  description.lfItalic = font.italic;
  description.lfUnderline = font.underline;
  description.lfStrikeOut = font.strikeout;
  description.lfCharSet = static_cast<BYTE>(font.charset);
  std::copy_n(font.name.begin(), std::min<std::size_t>(font.name.size(), LF_FACESIZE - 1), description.lfFaceName);
  return GdiObject<HFONT>(::CreateFontIndirectW(&description));
}

void draw_text(HDC context, const String& text, RECT& area, UINT format) {
  ::DrawTextW(context, wide(text), static_cast<int>(text.size()), &area, format);
}

std::int16_t code_of(char16_t character) {
  const Bytes bytes = native_code_page().encode(StringView(&character, 1));
  unsigned code = 0;
  for (const std::uint8_t byte : bytes) code = code << 8 | byte;
  return static_cast<std::int16_t>(code);
}

char16_t character_of(std::int16_t code) {
  const auto high = static_cast<std::uint8_t>(code >> 8);
  const auto low = static_cast<std::uint8_t>(code);
  const Bytes bytes = high ? Bytes{high, low} : Bytes{low};
  const String text = native_code_page().decode(bytes);
  return text.empty() ? u'\0' : text[0];
}

HINSTANCE own_module() {
  HMODULE module = nullptr;
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(&own_module), &module);
  return module;
}

// Three dots. The greyed ones have a light shadow.
void draw_glyph(HDC context, Glyph glyph, int left, int top) {
  const auto draw_dots = [&](int offset, int color) {
    for (const int x : {1, 5, 9}) {
      const RECT dot = {left + x + offset, top + offset, left + x + offset + 2, top + offset + browse_glyph_height};
      ::FillRect(context, &dot, ::GetSysColorBrush(color));
    }
  };
  if (glyph == Glyph::browse_greyed) draw_dots(1, COLOR_BTNHIGHLIGHT);
  draw_dots(0, glyph == Glyph::browse ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
}

}  // namespace tornby::windows
