// A text broken into lines and measured, for devices on which the system's DrawText draws or measures nothing.
#pragma once

#include <vector>

#include "controls/windows/gdi.h"

namespace tornby::windows {

struct TextLine {
  String text;                        ///< as it is seen: without marks of mnemonics
  std::vector<int> ends;              ///< where each unit ends, in pixels from the line's start
  std::size_t marked = String::npos;  ///< the unit that is underlined

  int width() const { return ends.empty() ? 0 : ends.back(); }
};

/// The lines that DrawText makes of the text in that font on the screen. Of `format`, DT_WORDBREAK, DT_SINGLELINE and
/// DT_NOPREFIX count.
std::vector<TextLine> text_lines(HFONT font, const String& text, int width, UINT format);

}  // namespace tornby::windows
