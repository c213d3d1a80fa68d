#include "automation/controls/pages/page_layout.h"

#include <algorithm>
#include <cwctype>
#include <iterator>

#include "automation/com/error_edge.h"

namespace tornby::automation {
namespace {

constexpr short margin = 7;
constexpr short gap = 4;
constexpr short page_width = 252;   // what the system's frame likes best
constexpr short least_height = 62;  // the least that it likes
constexpr short line_height = 14;
constexpr short text_height = 24;  // of two lines
constexpr short flag_height = 10;
constexpr short help_height = 24;  // of three lines
constexpr short list_height = 80;  // let down
constexpr short letter_width = 4;
constexpr short button_width = 50;
constexpr short columns = 2;  // of flags

using Kind = PageProperty::Kind;

/// Marks a letter that is not taken: the first one, one that begins a word, or any.
std::wstring with_mnemonic(const std::wstring& name, std::wstring& taken) {
  const auto is_free = [&](std::size_t i) {
    return std::iswalpha(name[i]) && taken.find(static_cast<wchar_t>(std::towupper(name[i]))) == std::wstring::npos;
  };
  for (const bool word_starts : {true, false}) {
    for (std::size_t i = 0; i < name.size(); ++i) {
      if (!is_free(i) || (word_starts && i > 0 && !std::iswupper(name[i]))) continue;
      taken += static_cast<wchar_t>(std::towupper(name[i]));
      return name.substr(0, i) + L'&' + name.substr(i);
    }
  }
  return name;
}

/// Grows a template, word by word.
class Template {
 public:
  void add(DWORD value) {
    words_.push_back(LOWORD(value));
    words_.push_back(HIWORD(value));
  }
  void add_word(int value) { words_.push_back(static_cast<WORD>(value)); }
  void add_text(const std::wstring& text) {
    words_.insert(words_.end(), text.begin(), text.end());
    words_.push_back(0);
  }
  void add_box(const PageLayout::Box& box) {
    for (const short length : {box.left, box.top, box.width, box.height}) add_word(length);
  }

  void begin(const PageLayout& layout, DWORD style, int items) {
    add_word(1);       // the form of the template
    add_word(0xFFFF);  // which is the extended one
    add(0);
    add(WS_EX_CONTROLPARENT);
    add(style | DS_SHELLFONT);
    add_word(items);
    add_box({0, 0, layout.width, layout.height});
    for (int i = 0; i < 3; ++i) add_word(0);  // no menu, no class, no title
    constexpr int points = 8;
    add_word(points);
    add_word(FW_NORMAL);
    add_word(DEFAULT_CHARSET << 8);
    add_text(L"MS Shell Dlg");
  }

  enum Class : WORD { button = 0x80, edit = 0x81, label = 0x82, combo_box = 0x85 };

  void add_item(Class kind, DWORD style, const PageLayout::Box& box, int id, const std::wstring& text,
                DWORD extended = 0) {
    if (words_.size() % 2 != 0) add_word(0);
    add(0);
    add(extended);
    add(style | WS_CHILD | WS_VISIBLE);
    add_box(box);
    add(static_cast<DWORD>(id));
    add_word(0xFFFF);
    add_word(kind);
    add_text(text);
    add_word(0);
  }

  std::vector<WORD> take() { return std::move(words_); }

 private:
  std::vector<WORD> words_;
};

INT_PTR CALLBACK on_message_of_none(HWND, UINT, WPARAM, LPARAM) {
  return FALSE;
}

constexpr int unit_scale = 800;  // units of dialogs that are measured at once

/// So many units of dialogs in pixels. Only a dialog in its font knows; one that nobody sees will do.
SIZE scaled_units() {
  Template made;
  made.begin(PageLayout({}), WS_POPUP, 0);
  const std::vector<WORD> page = made.take();
  const HWND dialog = ::CreateDialogIndirectParamW(nullptr, reinterpret_cast<const DLGTEMPLATE*>(page.data()), nullptr,
                                                   on_message_of_none, 0);
  if (!dialog) throw ComError(HRESULT_FROM_WIN32(::GetLastError()));
  RECT area = {0, 0, unit_scale, unit_scale};
  ::MapDialogRect(dialog, &area);
  ::DestroyWindow(dialog);
  return {area.right, area.bottom};
}

}  // namespace

PageLayout::PageLayout(std::span<const PageProperty> properties) : help(), revert(), width(page_width), height(0) {
  std::wstring taken = {revert_letter, L'A', L'H'};  // the last two are what frames have: Apply, Help
  std::size_t longest = 0;
  for (const PageProperty& property : properties)
    if (property.kind != Kind::flag) longest = std::max(longest, property.name.size() + 1);
  constexpr std::size_t most_letters = 30;
  const auto label_width = static_cast<short>(std::min(longest, most_letters) * letter_width + gap);
  const auto field_left = static_cast<short>(margin + label_width);

  short top = margin;
  rows.resize(properties.size());
  for (std::size_t i = 0; i < properties.size(); ++i) {
    if (properties[i].kind == Kind::flag) continue;
    const short field_height = properties[i].kind == Kind::text ? text_height : line_height;
    rows[i] = {{margin, static_cast<short>(top + 2), label_width, flag_height},
               {field_left, top, static_cast<short>(width - margin - field_left), field_height},
               with_mnemonic(properties[i].name, taken) + L':'};
    top = static_cast<short>(top + field_height + gap);
  }
  int flags = 0;
  constexpr short column_width = (page_width - 2 * margin) / columns;
  for (std::size_t i = 0; i < properties.size(); ++i) {
    if (properties[i].kind != Kind::flag) continue;
    const auto left = static_cast<short>(margin + flags % columns * column_width);
    const auto place = static_cast<short>(top + flags / columns * (flag_height + gap));
    rows[i] = {{}, {left, place, column_width - gap, flag_height}, with_mnemonic(properties[i].name, taken)};
    ++flags;
  }
  top = static_cast<short>(top + (flags + columns - 1) / columns * (flag_height + gap));
  height = std::max<short>(least_height, static_cast<short>(top + help_height + margin));
  revert = {static_cast<short>(width - margin - button_width), static_cast<short>(height - margin - line_height),
            button_width, line_height};
  help = {margin, static_cast<short>(height - margin - help_height), static_cast<short>(revert.left - gap - margin),
          help_height};
}

std::vector<WORD> dialog_template(std::span<const PageProperty> properties, const PageLayout& layout) {
  const auto labels =
      std::count_if(properties.begin(), properties.end(), [](const auto& one) { return one.kind != Kind::flag; });
  Template made;
  made.begin(layout, WS_CHILD | DS_CONTROL, static_cast<int>(properties.size()) + static_cast<int>(labels) + 2);
  // A label stands right before its field: the field is named by it, also to those who hear the screen.
  for (const bool flags : {false, true}) {
    for (std::size_t i = 0; i < properties.size(); ++i) {
      const auto& [label_box, field_box, caption] = layout.rows[i];
      const int id = first_field + static_cast<int>(i);
      const Kind kind = properties[i].kind;
      if ((kind == Kind::flag) != flags) continue;
      if (!flags) made.add_item(Template::label, SS_LEFT, label_box, 0xFFFF, caption);
      switch (kind) {
        case Kind::flag:
          made.add_item(Template::button, BS_AUTOCHECKBOX | BS_NOTIFY | WS_TABSTOP, field_box, id, caption);
          break;
        case Kind::choice: {
          PageLayout::Box open = field_box;
          open.height = list_height;
          made.add_item(Template::combo_box, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, open, id, L"");
          break;
        }
        case Kind::number:
          made.add_item(Template::edit, ES_AUTOHSCROLL | WS_TABSTOP, field_box, id, L"", WS_EX_CLIENTEDGE);
          break;
        case Kind::text:
          made.add_item(Template::edit, ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL | WS_TABSTOP,
                        field_box, id, L"", WS_EX_CLIENTEDGE);
          break;
      }
    }
  }
  made.add_item(Template::label, SS_LEFT | SS_NOPREFIX, layout.help, help_text, L"");
  made.add_item(Template::button, BS_PUSHBUTTON | WS_TABSTOP, layout.revert, revert_button, L"&Revert");
  return made.take();
}

SIZE size_in_pixels(const PageLayout& layout) {
  const SIZE scaled = scaled_units();
  return {::MulDiv(layout.width, scaled.cx, unit_scale), ::MulDiv(layout.height, scaled.cy, unit_scale)};
}

std::vector<WORD> empty_dialog(SIZE pixels) {
  const SIZE scaled = scaled_units();
  PageLayout layout({});
  layout.width = static_cast<short>(::MulDiv(pixels.cx, unit_scale, scaled.cx) + 1);
  layout.height = static_cast<short>(::MulDiv(pixels.cy, unit_scale, scaled.cy) + 1);
  Template made;
  made.begin(layout, WS_CHILD | DS_CONTROL, 0);
  return made.take();
}

}  // namespace tornby::automation
