#include "form_menu.h"

namespace {

constexpr UINT choices_each = 3;

/// A setting whose choices are its values 0, 1 and 2.
struct Setting {
  int FormState::*value;
  UINT first_command;
  const wchar_t* choices[choices_each];
};

constexpr Setting settings[] = {
    {&FormState::alignment, 200, {L"&Left", L"&Right", L"&Centre"}},
    {&FormState::vertical, 300, {L"&Top", L"&Middle", L"&Bottom"}},
    {&FormState::frame, 400, {L"&No frame", L"&Dotted frame", L"L&ine frame"}},
};

HMENU make_file_menu() {
  const HMENU menu = ::CreatePopupMenu();
  ::AppendMenuW(menu, MF_STRING, open_command, L"&Open...");
  ::AppendMenuW(menu, MF_STRING, check_command, L"&Check again\tEnter");
  ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  ::AppendMenuW(menu, MF_STRING, exit_command, L"E&xit");
  return menu;
}

HMENU make_label_menu() {
  const HMENU menu = ::CreatePopupMenu();
  for (const Setting& setting : settings) {
    if (&setting != settings) ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    UINT command = setting.first_command;
    for (const wchar_t* choice : setting.choices) ::AppendMenuW(menu, MF_STRING, command++, choice);
  }
  return menu;
}

}  // namespace

HMENU make_menu() {
  const HMENU menu = ::CreateMenu();
  ::AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(make_file_menu()), L"&File");
  ::AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(make_label_menu()), L"&Label");
  return menu;
}

void choose(UINT command, FormState& state) {
  for (const Setting& setting : settings) {
    const UINT choice = command - setting.first_command;  // beyond the last for a lower command, too
    if (choice < choices_each) state.*setting.value = static_cast<int>(choice);
  }
}

void mark_choices(HMENU menu, const FormState& state) {
  for (const Setting& setting : settings) {
    const UINT first = setting.first_command;
    ::CheckMenuRadioItem(menu, first, first + choices_each - 1, first + state.*setting.value, MF_BYCOMMAND);
  }
}
