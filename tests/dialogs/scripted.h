// The dialogs' services, scripted: answers are set, requests are kept.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "base/single_byte_code_page.h"
#include "base/variant.h"
#include "dialogs/clsDIALOGS.h"

namespace tornby::testing {

/// Answers every dialog with the answer set for its kind, cancelled at first, and keeps the last request of each kind.
class ScriptedDialogs final : public Dialogs {
 public:
  FileDialogRequest opening, saving;
  FolderDialogRequest folder;
  FontDialogRequest font;
  PrintDialogRequest printing;
  PageSetupRequest page;
  AboutRequest about;

  FileDialogAnswer opened, saved;
  FolderDialogAnswer folder_chosen;
  FontDialogAnswer font_chosen;
  PrintDialogAnswer printed;
  PageSetupAnswer page_set_up;
  std::uint32_t error = 0;

  int calls = 0;
  std::function<void()> before_call = [] {};  // may throw in the dialog's place

  std::int32_t desktop_window() override { return 0x10010; }
  FileDialogAnswer open_file(const FileDialogRequest& request) override { return play(opening, request, opened); }
  FileDialogAnswer save_file(const FileDialogRequest& request) override { return play(saving, request, saved); }
  FolderDialogAnswer browse_for_folder(const FolderDialogRequest& request) override {
    return play(folder, request, folder_chosen);
  }
  FontDialogAnswer choose_font(const FontDialogRequest& request) override { return play(font, request, font_chosen); }
  PrintDialogAnswer print(const PrintDialogRequest& request) override { return play(printing, request, printed); }
  PageSetupAnswer set_up_page(const PageSetupRequest& request) override { return play(page, request, page_set_up); }
  std::int32_t show_about(const AboutRequest& request) override { return play(about, request, 1); }
  std::uint32_t extended_error() override { return error; }

 private:
  template <class Request, class Answer>
  Answer play(Request& kept, const Request& request, const Answer& answer) {
    ++calls;
    kept = request;
    before_call();
    return answer;
  }
};

/// Keeps every box; answers them in turn, with Abort when no answer is left.
class ScriptedBoxes final : public MessageBoxes {
 public:
  std::vector<BoxRequest> shown;
  std::deque<BoxAnswer> answers;

  BoxAnswer show(const BoxRequest& request) override {
    shown.push_back(request);
    if (answers.empty()) return BoxAnswer::abort;
    const BoxAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

/// One initialisation file in memory.
class MemoryProfiles final : public ProfileFiles {
 public:
  std::map<String, String> values;
  std::vector<std::pair<String, String>> written;  // in order
  String file, section;                            // of the last call
  String windows_folder = u"C:\\WINDOWS";
  std::size_t folder_capacity = 0;
  std::size_t value_capacity = 0;
  bool writable = true;
  bool throws = false;

  String folder(std::size_t capacity) override {
    folder_capacity = capacity;
    return windows_folder;
  }
  String read_text(StringView path, StringView section_name, StringView key, std::size_t capacity) override {
    remember(path, section_name);
    value_capacity = capacity;
    const auto found = values.find(String(key));
    return found == values.end() ? String() : found->second;
  }
  std::int32_t read_number(StringView path, StringView section_name, StringView key, std::int32_t otherwise) override {
    remember(path, section_name);
    const auto found = values.find(String(key));
    return found == values.end() ? otherwise : to_int32(found->second);
  }
  bool write_text(StringView path, StringView section_name, StringView key, StringView value) override {
    remember(path, section_name);
    if (throws) throw std::bad_alloc();
    if (!writable) return false;
    written.emplace_back(key, value);
    values[String(key)] = value;
    return true;
  }

 private:
  void remember(StringView path, StringView section_name) {
    file = path;
    section = section_name;
  }
};

class FixedModule final : public Module {
 public:
  String folder() const override { return u"C:\\App"; }
  String name() const override { return u"host"; }
  ModuleVersion version() const override { return {u"Host", {2, 1, 40}, u"(c) \u00E9"}; }
};

/// The class with every service scripted.
struct Script {
  ScriptedDialogs dialogs;
  ScriptedBoxes boxes;
  MemoryProfiles profiles;
  FixedModule module;
  std::optional<clsDIALOGS> object;

  Script() { restart(); }
  clsDIALOGS* operator->() { return &*object; }

  /// Destroys the object and makes the next one.
  void restart() {
    object.reset();
    object.emplace(dialogs, boxes, profiles, module, windows_1252());
  }

  void answer_open(std::string buffer, std::int32_t filter_index = 1) {
    dialogs.opened = {1, std::move(buffer), filter_index};
  }
  void answer_save(std::string buffer, std::int32_t filter_index = 1) {
    dialogs.saved = {1, std::move(buffer), filter_index};
  }
};

/// The library's text as a test shows it.
inline std::string shown(StringView text) {
  std::string out;
  for (const char16_t unit : text) out += unit == 0 ? '|' : unit < 0x80 ? static_cast<char>(unit) : '#';
  return out;
}

}  // namespace tornby::testing
