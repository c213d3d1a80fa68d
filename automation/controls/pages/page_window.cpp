#include "automation/controls/pages/page_window.h"

#include <algorithm>
#include <cwctype>

#include "automation/com/error_edge.h"
#include "automation/com/help.h"
#include "automation/controls/pages/property_page.h"
#include "automation/controls/pages/text_field.h"

namespace tornby::automation {
namespace {

using Kind = PageProperty::Kind;

std::vector<PageProperty> properties_of(const PageDraft& draft) {
  std::vector<PageProperty> properties;
  for (const PageField& field : draft.fields()) properties.push_back(field.property);
  return properties;
}

std::wstring text_of(HWND window) {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)), L'\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
  return text;
}

/// For as long as the page itself writes into its fields.
class Showing {
 public:
  explicit Showing(bool& showing) : showing_(showing), before_(std::exchange(showing, true)) {}
  ~Showing() { showing_ = before_; }
  Showing(const Showing&) = delete;
  Showing& operator=(const Showing&) = delete;

 private:
  bool& showing_;
  bool before_;
};

}  // namespace

PageWindow::PageWindow(HWND parent, const RECT& place, PageDraft& draft, std::function<void()> changed)
    : draft_(draft),
      changed_(std::move(changed)),
      layout_(properties_of(draft)),
      touched_(draft.fields().size(), false) {
  const std::vector<WORD> page = dialog_template(properties_of(draft), layout_);
  const Showing filling(showing_);
  window_ = ::CreateDialogIndirectParamW(nullptr, reinterpret_cast<const DLGTEMPLATE*>(page.data()), parent, on_message,
                                         reinterpret_cast<LPARAM>(this));
  if (!window_) throw ComError(HRESULT_FROM_WIN32(::GetLastError()));
  ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  try {
    for (std::size_t i = 0; i < draft_.fields().size(); ++i) {
      if (draft_.fields()[i].property.kind != Kind::text) continue;
      keep_to_dialog_keys(field(i));
      ::SendMessageW(field(i), EM_SETLIMITTEXT, 0, 0);
    }
    show_draft();
  } catch (...) {
    ::DestroyWindow(std::exchange(window_, nullptr));
    throw;
  }
}

PageWindow::~PageWindow() {
  if (!window_) return;
  ::SetWindowLongPtrW(window_, DWLP_USER, 0);
  ::DestroyWindow(window_);
}

INT_PTR CALLBACK PageWindow::on_message(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(window, DWLP_USER, lparam);
    return FALSE;  // the focus stays where it is
  }
  auto* const page = reinterpret_cast<PageWindow*>(::GetWindowLongPtrW(window, DWLP_USER));
  if (!page) return FALSE;
  if (message == WM_NCDESTROY) {  // also when a frame takes its windows away without a word
    page->window_ = nullptr;
    return FALSE;
  }
  if (message == WM_HELP) {
    const auto* const asked = reinterpret_cast<const HELPINFO*>(lparam);
    static_cast<void>(guarded(IID_NULL, L"Tornby", [&] { page->help(static_cast<std::size_t>(asked->iCtrlId)); }));
    return TRUE;
  }
  if (message != WM_COMMAND || page->showing_) return FALSE;
  static_cast<void>(guarded(IID_NULL, L"Tornby", [&] { page->on_command(LOWORD(wparam), HIWORD(wparam)); }));
  return TRUE;
}

void PageWindow::on_command(WORD id, WORD notice) {
  if (id == revert_button && notice == BN_CLICKED) {
    std::fill(touched_.begin(), touched_.end(), false);
    draft_.revert();
    show_draft();
    tell();
    return;
  }
  const std::size_t index = static_cast<std::size_t>(id) - first_field;
  if (id < first_field || index >= touched_.size()) return;
  const Kind kind = draft_.fields()[index].property.kind;
  if (notice == (kind == Kind::flag ? BN_SETFOCUS : kind == Kind::choice ? CBN_SETFOCUS : EN_SETFOCUS)) say_help(index);
  const WORD meant = kind == Kind::flag ? BN_CLICKED : kind == Kind::choice ? CBN_SELCHANGE : EN_CHANGE;
  if (notice != meant) return;
  touched_[index] = true;
  collect();
  tell();
}

void PageWindow::help(std::size_t id) const {
  const std::size_t index = id - first_field;
  const bool is_field = id >= first_field && index < touched_.size();
  const DWORD context = is_field ? draft_.fields()[index].property.help_context : 0;
  show_help(window_, context != 0 ? context : property_page_help);
}

void PageWindow::say_help(std::size_t index) const {
  ::SetDlgItemTextW(window_, help_text, draft_.fields()[index].property.help.c_str());
}

void PageWindow::tell() const {
  const auto changed = changed_;  // who is told may take the page away
  changed();
}

void PageWindow::collect() {
  for (std::size_t i = 0; i < touched_.size(); ++i) {
    if (!touched_[i]) continue;
    const auto value = held(i);
    draft_.enter(i, value ? *value : std::wstring());
    touched_[i] = false;
  }
  show_whether_it_reverts();
}

void PageWindow::show_whether_it_reverts() const {
  const HWND button = ::GetDlgItem(window_, revert_button);
  const bool can = draft_.can_revert();
  if (!can && ::GetFocus() == button) focus(touched_.size());  // which a disabled button would keep from the keyboard
  ::EnableWindow(button, can);
}

std::optional<std::wstring> PageWindow::held(std::size_t index) const {
  const HWND control = field(index);
  switch (draft_.fields()[index].property.kind) {
    case Kind::flag: {
      const LRESULT state = ::SendMessageW(control, BM_GETCHECK, 0, 0);
      if (state == BST_INDETERMINATE) return std::nullopt;
      return state == BST_CHECKED ? L"-1" : L"0";
    }
    case Kind::choice: {
      const LRESULT place = ::SendMessageW(control, CB_GETCURSEL, 0, 0);
      if (place == CB_ERR) return std::nullopt;
      return std::to_wstring(static_cast<LONG>(::SendMessageW(control, CB_GETITEMDATA, static_cast<WPARAM>(place), 0)));
    }
    default:
      return text_of(control);
  }
}

void PageWindow::fill_list(std::size_t index, const std::optional<std::wstring>& value) const {
  const HWND list = field(index);
  const auto add = [&](const std::wstring& name, LONG number) {
    const LRESULT place = ::SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    if (place < 0) throw ComError(E_OUTOFMEMORY);
    ::SendMessageW(list, CB_SETITEMDATA, static_cast<WPARAM>(place), number);
    if (value && *value == std::to_wstring(number)) ::SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  };
  ::SendMessageW(list, CB_RESETCONTENT, 0, 0);
  for (const auto& choice : draft_.fields()[index].property.choices) add(choice.name, choice.value);
  if (value && ::SendMessageW(list, CB_GETCURSEL, 0, 0) == CB_ERR) add(*value, std::stol(*value));  // it has no name
}

void PageWindow::show(std::size_t index) const {
  const auto value = draft_.fields()[index].shown();
  const HWND control = field(index);
  switch (draft_.fields()[index].property.kind) {
    case Kind::flag:
      // The third state can be chosen only where it means something.
      ::SendMessageW(control, BM_SETSTYLE, value ? BS_AUTOCHECKBOX : BS_AUTO3STATE, TRUE);
      ::SendMessageW(control, BM_SETCHECK,
                     !value           ? BST_INDETERMINATE
                     : *value == L"0" ? BST_UNCHECKED
                                      : BST_CHECKED,
                     0);
      break;
    case Kind::choice:
      fill_list(index, value);
      break;
    default:
      ::SetWindowTextW(control, value ? value->c_str() : L"");
  }
}

void PageWindow::show_draft() {
  if (!window_) return;
  const Showing showing(showing_);
  for (std::size_t i = 0; i < touched_.size(); ++i) {
    const bool is_list = draft_.fields()[i].property.kind == Kind::choice;
    const bool is_new_list = is_list && ::SendMessageW(field(i), CB_GETCOUNT, 0, 0) == 0;
    const auto value = draft_.fields()[i].shown();
    const auto present = held(i);
    const bool is_shown = value ? present == value : !present || present->empty();
    if (is_new_list || !is_shown) show(i);
  }
  show_whether_it_reverts();
}

void PageWindow::focus(std::size_t index) const {
  const HWND wanted = index < touched_.size() ? field(index) : ::GetNextDlgTabItem(window_, nullptr, FALSE);
  if (!wanted) return;
  ::SetFocus(wanted);
  if ((::SendMessageW(wanted, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0) ::SendMessageW(wanted, EM_SETSEL, 0, -1);
}

bool PageWindow::is_mnemonic(WPARAM letter) const {
  const auto wanted = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(letter)));
  if (wanted == revert_letter) return true;
  return std::any_of(layout_.rows.begin(), layout_.rows.end(), [&](const auto& row) {
    const std::size_t mark = row.caption.find(L'&');
    return mark != std::wstring::npos && static_cast<wchar_t>(std::towupper(row.caption[mark + 1])) == wanted;
  });
}

bool PageWindow::translate(MSG* message, const std::function<bool()>& leave) const {
  if (!window_ || !::IsChild(window_, message->hwnd)) return false;
  const HWND focused = message->hwnd;
  if (message->message == WM_KEYDOWN && message->wParam == VK_TAB && ::GetKeyState(VK_CONTROL) >= 0) {
    const bool back = ::GetKeyState(VK_SHIFT) < 0;
    const HWND first = ::GetNextDlgTabItem(window_, nullptr, FALSE);
    const HWND next = ::GetNextDlgTabItem(window_, focused, back);
    const bool leaves = back ? ::GetNextDlgTabItem(window_, first, TRUE) == next : next == first;
    const HWND page = window_;  // the frame may take the page away
    if (!leaves || !leave()) ::SendMessageW(page, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    return true;
  }
  const bool ends_list = message->message == WM_KEYDOWN &&
                         (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE) &&
                         ::SendMessageW(focused, CB_GETDROPPEDSTATE, 0, 0) != 0;
  if (!ends_list && !(message->message == WM_SYSCHAR && is_mnemonic(message->wParam))) return false;
  return ::IsDialogMessageW(window_, message) != FALSE;
}

}  // namespace tornby::automation
