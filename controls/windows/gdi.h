// Handles of the drawing system, and what the controls draw with them.
#pragma once

#include <utility>

#include <tornby/controls/host.h>
#include <tornby/platform/windows/system.h>

namespace tornby::windows {

/// Deletes a font, brush or bitmap. It must not be selected into a device context then.
template <class Handle>
class GdiObject {
 public:
  GdiObject() = default;
  explicit GdiObject(Handle handle) : handle_(handle) {}
  GdiObject(GdiObject&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  GdiObject& operator=(GdiObject&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~GdiObject() {
    if (handle_) ::DeleteObject(handle_);
  }
  Handle get() const { return handle_; }

 private:
  Handle handle_ = nullptr;
};

/// Selects an object until the end of the scope.
class Selection {
 public:
  Selection(HDC context, HGDIOBJ object) : context_(context), before_(::SelectObject(context, object)) {}
  ~Selection() { ::SelectObject(context_, before_); }
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

/// The screen's device context, for measuring.
class ScreenContext {
 public:
  /// Raises 7 (out of memory) when the system has none.
  ScreenContext();
  ~ScreenContext() { ::ReleaseDC(nullptr, context_); }
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;
  operator HDC() const { return context_; }

 private:
  HDC context_;
};

/// A device context of its own in memory, for measuring.
class MemoryContext {
 public:
  /// Raises 7 (out of memory) when the system makes none.
  MemoryContext();
  ~MemoryContext() { ::DeleteDC(context_); }
  MemoryContext(const MemoryContext&) = delete;
  MemoryContext& operator=(const MemoryContext&) = delete;
  operator HDC() const { return context_; }

 private:
  HDC context_;
};

/// Draws into memory and shows the result in one go, so that nothing flickers. Without memory it draws directly.
class BufferedPainting {
 public:
  BufferedPainting(HDC target, const RECT& area);
  ~BufferedPainting();
  BufferedPainting(const BufferedPainting&) = delete;
  BufferedPainting& operator=(const BufferedPainting&) = delete;
  HDC context() const { return memory_ ? memory_ : target_; }

 private:
  HDC target_;
  RECT area_;
  HDC memory_;
  GdiObject<HBITMAP> bitmap_;
  HGDIOBJ before_ = nullptr;
};

/// A plain colour as it is, a system colour as it is set now.
COLORREF resolved(Color color);

/// The ratio of two colours' relative luminances, from 1 to 21, as the Web Content Accessibility Guidelines 2.1 define
/// it.
double contrast(COLORREF one, COLORREF other);
/// The colour for a text on `ground`: `color`, unless the user has chosen a scheme of high contrast and could hardly
/// read it (the same guidelines ask for 4.5). Then it is the scheme's own, system colour `scheme_color`, or else black
/// or white.
COLORREF legible(COLORREF color, COLORREF ground, int scheme_color);

/// Raises 7 (out of memory) when the system makes none.
GdiObject<HFONT> make_font(const Font& font, int dots_per_inch);
/// `size` is that of a character, in units of the device context; 0 takes the width that belongs to the height.
GdiObject<HFONT> make_font(const Font& font, SIZE size);

/// The measures of a font on the screen.
TEXTMETRICW text_metrics(HFONT font);

/// As DrawText, whose flags `format` are; it may change `area`.
void draw_text(HDC context, const String& text, RECT& area, UINT format);

/// The text as system functions take it.
inline const wchar_t* wide(const String& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

inline RECT to_rect(const Rectangle& area) {
  return {area.left, area.top, area.right, area.bottom};
}

/// The program or DLL that this code is part of. Window classes belong to it, so that they end with it.
HINSTANCE own_module();

}  // namespace tornby::windows
