#include "automation/controls/pages/sheet_page.h"

#include <prsht.h>

#include "automation/controls/task_memory.h"

namespace tornby::automation {

HRESULT SheetSite::OnStatusChange(DWORD status) {
  if (!place_) return S_OK;
  const bool dirty = (status & PROPPAGESTATUS_DIRTY) != 0;
  ::SendMessageW(::GetParent(place_), dirty ? PSM_CHANGED : PSM_UNCHANGED, reinterpret_cast<WPARAM>(place_), 0);
  return S_OK;
}

HRESULT SheetSite::GetLocaleID(LCID* locale) {
  if (!locale) return E_POINTER;
  *locale = ::GetUserDefaultLCID();
  return S_OK;
}

HRESULT SheetSite::GetPageContainer(IUnknown** container) {
  if (!container) return E_POINTER;
  *container = nullptr;
  return E_NOTIMPL;
}

SheetPage::SheetPage(REFCLSID clsid, IUnknown* object) : site_(ComPtr<SheetSite>::adopt(new SheetSite)) {
  check(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage, page_.out_void()));
  check(page_->SetPageSite(site_.get()));
  try {
    check(page_->SetObjects(1, &object));
    PROPPAGEINFO info = {};
    info.cb = sizeof info;
    check(page_->GetPageInfo(&info));
    const std::unique_ptr<OLECHAR[], TaskMemory> title(info.pszTitle), summary(info.pszDocString),
        file(info.pszHelpFile);
    if (title) title_ = title.get();
    size_ = info.size;
    has_help_ = file != nullptr;
  } catch (...) {
    page_->SetObjects(0, nullptr);
    page_->SetPageSite(nullptr);
    throw;
  }
}

SheetPage::~SheetPage() {
  close();
  page_->SetObjects(0, nullptr);
  page_->SetPageSite(nullptr);
}

void SheetPage::open(HWND place) {
  RECT area = {};
  ::GetClientRect(place, &area);
  check(page_->Activate(place, &area, TRUE));
  site_->set_place(place);
  page_->Show(SW_SHOW);
}

void SheetPage::close() {
  site_->set_place(nullptr);
  page_->Deactivate();
}

}  // namespace tornby::automation
