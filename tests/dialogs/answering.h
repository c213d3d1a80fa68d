// Answers to the system's dialogs, given from inside the process.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace tornby::testing {

/// A dialog or box that is about to be shown.
class OpenDialog {
 public:
  explicit OpenDialog(HWND window) : window_(window) {}

  HWND window() const { return window_; }
  std::string caption() const { return text_of(window_); }

  /// A control by its number, and by its class where several share a number. It may stand inside another control.
  HWND control(int id, const char* class_name = nullptr) const;
  std::string text(int id) const { return text_of(control(id)); }

  void type(int id, const char* text, const char* class_name = nullptr) const;

  /// Chooses an entry of a list by its text, or by its place, as a user would.
  void choose(int id, const char* entry) const;
  void choose(int id, int place) const;

  /// Presses a button: posted, so that it happens when the dialog runs.
  void press(int button) const;

 private:
  static std::string text_of(HWND window);
  void announce_choice(HWND list) const;

  HWND window_;
};

enum : int { ok_button = 1, cancel_button = 2, abort_button = 3, retry_button = 4, ignore_button = 5 };

/// While it lives, each dialog of this thread is answered by the next of the answers as soon as it appears, and
/// cancelled when none is left: a test never waits for a user. Inner ones stand in for outer ones.
class Answers {
 public:
  using Answer = std::function<void(const OpenDialog&)>;

  Answers(std::initializer_list<Answer> answers);
  ~Answers();
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;

  /// The captions of the dialogs that appeared, in order. One that comes to the front again counts again.
  const std::vector<std::string>& seen() const { return seen_; }
  bool all_given() const { return answers_.empty(); }

 private:
  static LRESULT CALLBACK on_hook(int code, WPARAM window, LPARAM detail);

  static thread_local Answers* current_;
  Answers* outer_;
  HHOOK hook_ = nullptr;
  std::deque<Answer> answers_;
  std::vector<std::string> seen_;
};

/// The commonest answer.
inline Answers::Answer press(int button) {
  return [button](const OpenDialog& dialog) { dialog.press(button); };
}

/// An answer that waits until the dialog runs: only then are all of its lists filled.
Answers::Answer when_running(Answers::Answer answer);

}  // namespace tornby::testing
