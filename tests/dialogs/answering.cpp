#include "answering.h"

#include <utility>

namespace tornby::testing {
namespace {

std::string class_of(HWND window) {
  char name[64] = {};
  ::GetClassNameA(window, name, sizeof name);
  return name;
}

struct Search {
  int id;
  const char* class_name;
  HWND found;
};

BOOL CALLBACK matches(HWND window, LPARAM context) {
  auto* search = reinterpret_cast<Search*>(context);
  if (::GetDlgCtrlID(window) != search->id) return TRUE;
  if (search->class_name && class_of(window) != search->class_name) return TRUE;
  search->found = window;
  return FALSE;
}

/// What runs on the timer's next tick.
thread_local std::function<void()> waiting;

void CALLBACK on_timer(HWND, UINT, UINT_PTR timer, DWORD) {
  ::KillTimer(nullptr, timer);
  std::exchange(waiting, nullptr)();
}

}  // namespace

HWND OpenDialog::control(int id, const char* class_name) const {
  Search search{id, class_name, nullptr};
  ::EnumChildWindows(window_, matches, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::string OpenDialog::text_of(HWND window) {
  char text[512] = {};
  ::SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  return text;
}

void OpenDialog::type(int id, const char* text, const char* class_name) const {
  ::SendMessageA(control(id, class_name), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

void OpenDialog::choose(int id, const char* entry) const {
  const HWND list = control(id);
  ::SendMessageA(list, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(entry));
  announce_choice(list);
}

void OpenDialog::choose(int id, int place) const {
  const HWND list = control(id);
  ::SendMessageA(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  announce_choice(list);
}

void OpenDialog::announce_choice(HWND list) const {
  for (const int notice : {CBN_SELENDOK, CBN_SELCHANGE})
    ::SendMessageA(::GetParent(list), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(list), notice),
                   reinterpret_cast<LPARAM>(list));
}

void OpenDialog::press(int button) const {
  const HWND control_window = control(button, "Button");
  ::PostMessageA(window_, WM_COMMAND, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(control_window));
}

thread_local Answers* Answers::current_ = nullptr;

Answers::Answers(std::initializer_list<Answer> answers) : outer_(current_), answers_(answers) {
  if (!outer_) hook_ = ::SetWindowsHookExA(WH_CBT, on_hook, nullptr, ::GetCurrentThreadId());
  current_ = this;
}

Answers::~Answers() {
  if (hook_) ::UnhookWindowsHookEx(hook_);
  current_ = outer_;
}

LRESULT CALLBACK Answers::on_hook(int code, WPARAM window, LPARAM detail) {
  const OpenDialog dialog(reinterpret_cast<HWND>(window));
  if (code == HCBT_ACTIVATE && current_ && class_of(dialog.window()) == "#32770") {
    Answers& self = *current_;
    self.seen_.push_back(dialog.caption());
    Answer answer = testing::press(cancel_button);
    if (!self.answers_.empty()) {
      answer = std::move(self.answers_.front());
      self.answers_.pop_front();
    }
    answer(dialog);
  }
  return ::CallNextHookEx(nullptr, code, window, detail);
}

Answers::Answer when_running(Answers::Answer answer) {
  return [answer = std::move(answer)](const OpenDialog& dialog) {
    waiting = [answer, dialog] { answer(dialog); };
    ::SetTimer(nullptr, 0, 10, on_timer);
  };
}

}  // namespace tornby::testing
