#include "automation/controls/control_browsing.h"

#include <algorithm>

#include "automation/com/convert.h"
#include "automation/controls/pages/property_frame.h"
#include "automation/controls/pages/property_page.h"
#include "automation/controls/task_memory.h"

namespace tornby::automation {
namespace {

/// The system's stock pages, and our own for the rest.
const CLSID* page_id(PropertyTraits::Page page) {
  switch (page) {
    case PropertyTraits::Page::color:
      return &CLSID_CColorPropPage;
    case PropertyTraits::Page::font:
      return &CLSID_CFontPropPage;
    case PropertyTraits::Page::picture:
      return &CLSID_CPicturePropPage;
    case PropertyTraits::Page::own:
      break;
  }
  return &property_page_id;
}

class PageList {
 public:
  ~PageList() { ::CoTaskMemFree(pages_.pElems); }
  CAUUID* out() { return &pages_; }
  const CAUUID* operator->() const { return &pages_; }

 private:
  CAUUID pages_ = {};
};

}  // namespace

const PropertyTraits* ControlBrowsing::find(DISPID property) const {
  const auto known = traits();
  const auto found = std::find_if(known.begin(), known.end(), [&](const auto& one) { return one.id == property; });
  return found == known.end() ? nullptr : &*found;
}

HRESULT ControlBrowsing::GetPages(CAUUID* pages) {
  if (!pages) return E_POINTER;
  *pages = {};
  return run([&] {
    constexpr PropertyTraits::Page order[] = {PropertyTraits::Page::own, PropertyTraits::Page::color,
                                              PropertyTraits::Page::font, PropertyTraits::Page::picture};
    auto list = task_array<GUID>(std::size(order));
    ULONG count = 0;
    for (const PropertyTraits::Page page : order) {
      const auto known = traits();
      if (std::any_of(known.begin(), known.end(), [&](const auto& one) { return one.page == page; }))
        list[count++] = *page_id(page);
    }
    *pages = {count, list.release()};
  });
}

HRESULT ControlBrowsing::GetDisplayString(DISPID property, BSTR* text) {
  if (!text) return E_POINTER;
  *text = nullptr;
  const PropertyTraits* known = find(property);
  if (!known || known->choices.empty()) return S_FALSE;  // the designer shows the value
  HRESULT answer = S_FALSE;
  const HRESULT result = run([&] {
    ComPtr<IDispatch> dispatch;
    check(identity()->QueryInterface(IID_IDispatch, dispatch.out_void()));
    DISPPARAMS none = {};
    OwnedVariant value;
    check(dispatch->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.get(), nullptr,
                           nullptr));
    check(::VariantChangeType(value.get(), value.get(), 0, VT_I4));
    for (const auto& choice : known->choices) {
      if (choice.value != value->lVal) continue;
      *text = to_bstr(StringView(reinterpret_cast<const char16_t*>(choice.name)));
      answer = S_OK;
    }
  });
  return FAILED(result) ? result : answer;
}

HRESULT ControlBrowsing::MapPropertyToPage(DISPID property, CLSID* page) {
  if (!page) return E_POINTER;
  *page = CLSID_NULL;
  const PropertyTraits* known = find(property);
  if (!known) return PERPROP_E_NOPAGEAVAILABLE;
  *page = *page_id(known->page);
  return S_OK;
}

HRESULT ControlBrowsing::GetPredefinedStrings(DISPID property, CALPOLESTR* names, CADWORD* cookies) {
  if (!names || !cookies) return E_POINTER;
  *names = {};
  *cookies = {};
  const PropertyTraits* known = find(property);
  if (!known || known->choices.empty()) return E_NOTIMPL;
  return run([&] {
    const std::size_t count = known->choices.size();
    auto values = task_array<DWORD>(count);
    auto texts = task_array<LPOLESTR>(count);
    try {
      for (std::size_t i = 0; i < count; ++i) {
        values[i] = static_cast<DWORD>(i);
        texts[i] = task_text(known->choices[i].name).release();
      }
    } catch (...) {
      for (std::size_t i = 0; i < count; ++i) ::CoTaskMemFree(texts[i]);
      throw;
    }
    *names = {static_cast<ULONG>(count), texts.release()};
    *cookies = {static_cast<ULONG>(count), values.release()};
  });
}

HRESULT ControlBrowsing::GetPredefinedValue(DISPID property, DWORD cookie, VARIANT* value) {
  if (!value) return E_POINTER;
  ::VariantInit(value);
  const PropertyTraits* known = find(property);
  if (!known || cookie >= known->choices.size()) return E_INVALIDARG;
  value->vt = VT_I2;
  value->iVal = known->choices[cookie].value;
  return S_OK;
}

HRESULT ControlBrowsing::MapPropertyToCategory(DISPID property, int* category) {
  if (!category) return E_POINTER;
  const PropertyTraits* known = find(property);
  *category = known ? known->category : 0;
  return known ? S_OK : E_FAIL;
}

HRESULT ControlBrowsing::GetCategoryName(int, LCID, BSTR* name) {
  if (!name) return E_POINTER;
  *name = nullptr;
  return E_NOTIMPL;  // designers have names for the categories that all know
}

HRESULT ControlBrowsing::QuickActivate(QACONTAINER* container, QACONTROL* control) {
  if (!container || !control) return E_POINTER;
  if (container->cbSize < sizeof *container || control->cbSize < sizeof *control) return E_INVALIDARG;
  const ULONG size = control->cbSize;
  *control = {};
  control->cbSize = size;
  return run([&] {
    check(SetClientSite(container->pClientSite));
    if (container->pAdviseSink) check(SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink));
    if (container->pPropertyNotifySink)
      check(property_notices().Advise(container->pPropertyNotifySink, &control->dwPropNotifyCookie));
    if (container->pUnkEventSink) check(event_sinks().Advise(container->pUnkEventSink, &control->dwEventCookie));
    control->dwMiscStatus = misc_status();
    control->dwViewStatus = VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND;
  });
}

/// The container's own frame, which it may fill as it likes, or else the system's.
void ControlBrowsing::show_properties(HWND parent) {
  make_ready();
  if (control_site() && control_site()->ShowPropertyFrame() == S_OK) return;
  PageList pages;
  check(GetPages(pages.out()));
  const String name = display_name();
  show_property_frame(parent, name.empty() ? find_class(clsid())->name : windows::wide(name), identity(), *pages.out());
}

}  // namespace tornby::automation
