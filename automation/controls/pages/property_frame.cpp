#include "automation/controls/pages/property_frame.h"

#include <algorithm>
#include <vector>

#include "automation/com/error_edge.h"
#include "automation/controls/pages/property_page.h"
#include "automation/controls/pages/property_sheet.h"
#include "automation/server/class_factory.h"

namespace tornby::automation {
namespace {

/// Makes our page known to COM in this process, whatever is registered.
class KnownPage {
 public:
  KnownPage() {
    ComPtr<IUnknown> factory;
    check(create_class_factory(*find_class(property_page_id), IID_IUnknown, factory.out_void()));
    if (FAILED(::CoRegisterClassObject(property_page_id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                       &cookie_)))
      cookie_ = 0;  // it may be registered
  }
  ~KnownPage() {
    if (cookie_ != 0) ::CoRevokeClassObject(cookie_);
  }
  KnownPage(const KnownPage&) = delete;
  KnownPage& operator=(const KnownPage&) = delete;

 private:
  DWORD cookie_ = 0;
};

bool system_frame_applies() {
  const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
  return !ntdll || !::GetProcAddress(ntdll, "wine_get_version");
}

}  // namespace

void show_property_frame(HWND owner, const std::wstring& caption, IUnknown* object, const CAUUID& pages) {
  const KnownPage known;
  if (system_frame_applies() &&
      SUCCEEDED(::OleCreatePropertyFrame(owner, 0, 0, caption.c_str(), 1, &object, pages.cElems, pages.pElems,
                                         LOCALE_USER_DEFAULT, 0, nullptr)))
    return;
  show_property_sheet(owner, caption, object, {pages.pElems, pages.cElems});
}

}  // namespace tornby::automation
