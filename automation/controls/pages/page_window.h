// The window of the page: a dialog within the frame's.
#pragma once

#include <functional>

#include "automation/controls/pages/page_draft.h"
#include "automation/controls/pages/page_layout.h"

namespace tornby::automation {

class PageWindow {
 public:
  /// `changed` is called when the user has changed something in the draft, which must outlive the window.
  PageWindow(HWND parent, const RECT& place, PageDraft& draft, std::function<void()> changed);
  ~PageWindow();
  PageWindow(const PageWindow&) = delete;
  PageWindow& operator=(const PageWindow&) = delete;

  HWND handle() const { return window_; }

  /// Shows the draft, in the fields that show something else.
  void show_draft();
  /// Takes what the fields hold that the user has touched into the draft.
  void collect();
  /// To the field of that number, or to the first one.
  void focus(std::size_t field) const;

  /// Whether the key was for the page. `leave` is asked when Tab would leave the page.
  bool translate(MSG* message, const std::function<bool()>& leave) const;

 private:
  static INT_PTR CALLBACK on_message(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void on_command(WORD id, WORD notice);

  HWND field(std::size_t index) const { return ::GetDlgItem(window_, first_field + static_cast<int>(index)); }
  void fill_list(std::size_t index, const std::optional<std::wstring>& value) const;
  void show(std::size_t index) const;
  std::optional<std::wstring> held(std::size_t index) const;
  void tell() const;
  void help(std::size_t id) const;
  void say_help(std::size_t index) const;
  bool is_mnemonic(WPARAM letter) const;
  void show_whether_it_reverts() const;

  PageDraft& draft_;
  std::function<void()> changed_;
  PageLayout layout_;
  std::vector<bool> touched_;
  bool showing_ = false;
  HWND window_ = nullptr;
};

}  // namespace tornby::automation
