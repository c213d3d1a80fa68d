// Where the page's fields stand, in the units of dialogs, which follow the font and the resolution.
#pragma once

#include <span>
#include <vector>

#include "automation/controls/pages/page_property.h"

namespace tornby::automation {

struct PageLayout {
  struct Box {
    short left, top, width, height;
  };
  struct Row {
    Box label;  // empty for a flag, whose box has its own
    Box field;
    std::wstring caption;  // with its mnemonic marked, which no other row has
  };

  explicit PageLayout(std::span<const PageProperty> properties);

  std::vector<Row> rows;
  Box help;  // what is said of the field that has the focus
  Box revert;
  short width, height;
};

/// The dialog of a page as the system takes it, with the fields' numbers from `first_field` on.
std::vector<WORD> dialog_template(std::span<const PageProperty> properties, const PageLayout& layout);

constexpr WORD help_text = 49;
constexpr WORD revert_button = 50;
constexpr wchar_t revert_letter = L'R';
constexpr WORD first_field = 100;

/// The layout's size in pixels, on the screen.
SIZE size_in_pixels(const PageLayout& layout);

/// A dialog of that size in pixels with nothing in it.
std::vector<WORD> empty_dialog(SIZE pixels);

}  // namespace tornby::automation
