#include "automation/controls/pages/property_sheet.h"

#include <prsht.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "automation/controls/pages/page_layout.h"
#include "automation/controls/pages/sheet_page.h"
#include "platform/windows/system_library.h"

namespace tornby::automation {
namespace {

/// The sheet's own window for a page, which the page fills.
INT_PTR CALLBACK on_message(HWND place, UINT message, WPARAM, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    const LPARAM page = reinterpret_cast<const PROPSHEETPAGEW*>(lparam)->lParam;
    ::SetWindowLongPtrW(place, DWLP_USER, page);
    static_cast<void>(guarded(IID_NULL, L"Tornby", [&] { reinterpret_cast<SheetPage*>(page)->open(place); }));
    return FALSE;
  }
  auto* const page = reinterpret_cast<SheetPage*>(::GetWindowLongPtrW(place, DWLP_USER));
  if (!page) return FALSE;
  if (message == WM_DESTROY) {
    page->close();
    return FALSE;
  }
  if (message != WM_NOTIFY) return FALSE;
  switch (reinterpret_cast<const NMHDR*>(lparam)->code) {
    case PSN_APPLY:
      ::SetWindowLongPtrW(place, DWLP_MSGRESULT, page->apply() ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE);
      return TRUE;
    case PSN_HELP:
      page->help();
      return TRUE;
    default:
      return FALSE;
  }
}

std::vector<std::unique_ptr<SheetPage>> create_pages(IUnknown* object, std::span<const CLSID> wanted) {
  std::vector<std::unique_ptr<SheetPage>> pages;
  for (const CLSID& clsid : wanted) {
    try {
      pages.push_back(std::make_unique<SheetPage>(clsid, object));
    } catch (const ComError& error) {
      if (error.result() == E_OUTOFMEMORY) throw;  // else it is not there, or not for such objects
    }
  }
  if (pages.empty()) throw ComError(CLASS_E_CLASSNOTAVAILABLE);
  return pages;
}

}  // namespace

void show_property_sheet(HWND owner, const std::wstring& caption, IUnknown* object, std::span<const CLSID> wanted) {
  const auto pages = create_pages(object, wanted);
  SIZE largest = {};
  for (const auto& page : pages)
    largest = {std::max(largest.cx, page->size().cx), std::max(largest.cy, page->size().cy)};
  const std::vector<WORD> place = empty_dialog(largest);

  std::vector<PROPSHEETPAGEW> sheet_pages;
  for (const auto& page : pages) {
    PROPSHEETPAGEW described = {};
    described.dwSize = sizeof described;
    described.dwFlags = PSP_DLGINDIRECT | PSP_USETITLE | (page->has_help() ? PSP_HASHELP : 0);
    described.pResource = reinterpret_cast<LPCDLGTEMPLATEW>(place.data());
    described.pszTitle = page->title().c_str();
    described.pfnDlgProc = on_message;
    described.lParam = reinterpret_cast<LPARAM>(page.get());
    sheet_pages.push_back(described);
  }
  PROPSHEETHEADERW sheet = {};
  sheet.dwSize = sizeof sheet;
  sheet.dwFlags = PSH_PROPSHEETPAGE | PSH_PROPTITLE | PSH_NOCONTEXTHELP;
  sheet.hwndParent = owner;
  sheet.pszCaption = caption.c_str();
  sheet.nPages = static_cast<UINT>(sheet_pages.size());
  sheet.ppsp = sheet_pages.data();
  const auto show = windows::system_function<INT_PTR WINAPI(LPCPROPSHEETHEADERW)>(L"comctl32.dll", "PropertySheetW");
  if (!show || show(&sheet) < 0) throw ComError(E_FAIL);
}

}  // namespace tornby::automation
