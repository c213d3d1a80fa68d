#include "automation/controls/pages/text_field.h"

namespace tornby::automation {
namespace {

constexpr const wchar_t* property = L"Tornby text field";

bool begins_line(const MSG* message) {
  return message && message->wParam == VK_RETURN && ::GetKeyState(VK_CONTROL) < 0;
}

LRESULT CALLBACK on_message(HWND edit, UINT message, WPARAM wparam, LPARAM lparam) {
  const auto usual = reinterpret_cast<WNDPROC>(::GetPropW(edit, property));
  const LRESULT result = ::CallWindowProcW(usual, edit, message, wparam, lparam);
  switch (message) {
    case WM_GETDLGCODE:
      if (begins_line(reinterpret_cast<const MSG*>(lparam))) return result;
      return (result & ~(DLGC_WANTALLKEYS | DLGC_WANTTAB)) | DLGC_HASSETSEL;
    case WM_NCDESTROY:
      ::RemovePropW(edit, property);
      break;
    default:
      break;
  }
  return result;
}

}  // namespace

void keep_to_dialog_keys(HWND edit) {
  const LONG_PTR usual = ::GetWindowLongPtrW(edit, GWLP_WNDPROC);
  if (::SetPropW(edit, property, reinterpret_cast<HANDLE>(usual)))
    ::SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(on_message));
}

}  // namespace tornby::automation
