#include "controls/windows/gdi.h"

#include <algorithm>
#include <cmath>

#include "base/runtime_error.h"

namespace tornby::windows {

ScreenContext::ScreenContext() : context_(::GetDC(nullptr)) {
  if (!context_) throw RuntimeError(StandardError::out_of_memory);
}

MemoryContext::MemoryContext() : context_(::CreateCompatibleDC(nullptr)) {
  if (!context_) throw RuntimeError(StandardError::out_of_memory);
}

BufferedPainting::BufferedPainting(HDC target, const RECT& area)
    : target_(target), area_(area), memory_(::CreateCompatibleDC(target)) {
  if (!memory_) return;
  bitmap_ = GdiObject<HBITMAP>(::CreateCompatibleBitmap(target, area.right - area.left, area.bottom - area.top));
  if (!bitmap_.get()) {
    ::DeleteDC(std::exchange(memory_, nullptr));
    return;
  }
  before_ = ::SelectObject(memory_, bitmap_.get());
  ::SetLayout(memory_, ::GetLayout(target));  // on a mirrored form texts are not
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

double contrast(COLORREF one, COLORREF other) {
  const auto luminance = [](COLORREF color) {
    const auto linear = [](int level) {
      const double part = level / 255.0;
      return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) + 0.0722 * linear(GetBValue(color));
  };
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

COLORREF legible(COLORREF color, COLORREF ground, int scheme_color) {
  constexpr double enough = 4.5;
  HIGHCONTRASTW scheme = {};
  scheme.cbSize = sizeof scheme;
  if (contrast(color, ground) >= enough || !::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof scheme, &scheme, 0) ||
      !(scheme.dwFlags & HCF_HIGHCONTRASTON))
    return color;
  const COLORREF own = ::GetSysColor(scheme_color);
  if (contrast(own, ground) >= enough) return own;
  constexpr COLORREF black = 0, white = 0xFFFFFF;
  return contrast(black, ground) >= contrast(white, ground) ? black : white;
}

GdiObject<HFONT> make_font(const Font& font, int dots_per_inch) {
  constexpr double most = 0x7FFF;  // as high as coordinates go
  const double height = std::clamp(font.size * dots_per_inch / 72, -most, most);
  return make_font(font, SIZE{0, static_cast<LONG>(std::lround(height))});
}

GdiObject<HFONT> make_font(const Font& font, SIZE size) {
  LOGFONTW description{};
  description.lfHeight = -size.cy;
  description.lfWidth = size.cx;
  description.lfWeight = font.weight;
  description.lfItalic = font.italic;
  description.lfUnderline = font.underline;
  description.lfStrikeOut = font.strikeout;
  description.lfCharSet = static_cast<BYTE>(font.charset);
  std::copy_n(font.name.begin(), std::min<std::size_t>(font.name.size(), LF_FACESIZE - 1), description.lfFaceName);
  GdiObject<HFONT> made(::CreateFontIndirectW(&description));
  if (!made.get()) throw RuntimeError(StandardError::out_of_memory);
  return made;
}

TEXTMETRICW text_metrics(HFONT font) {
  const ScreenContext screen;
  const Selection selection(screen, font);
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(screen, &metrics);
  return metrics;
}

void draw_text(HDC context, const String& text, RECT& area, UINT format) {
  ::DrawTextW(context, wide(text), static_cast<int>(text.size()), &area, format);
}

HINSTANCE own_module() {
  HMODULE module = nullptr;
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(&own_module), &module);
  return module;
}

}  // namespace tornby::windows
