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
