#include "automation/controls/control_embedding.h"

#include <cstring>
#include <cwchar>
#include <iterator>

#include "automation/com/enumerator.h"
#include "automation/controls/verbs.h"

namespace tornby::automation {

template <>
struct EnumeratorItem<OLEVERB> {
  using Kept = Verb;
  static HRESULT copy(const Kept& kept, OLEVERB* out) {
    const std::size_t size = (std::wcslen(kept.name) + 1) * sizeof(wchar_t);
    *out = {kept.number, static_cast<LPOLESTR>(::CoTaskMemAlloc(size)), 0, kept.attributes};
    if (!out->lpszVerbName) return E_OUTOFMEMORY;
    std::memcpy(out->lpszVerbName, kept.name, size);
    return S_OK;
  }
  static void free(OLEVERB* item) { ::CoTaskMemFree(item->lpszVerbName); }
};

HRESULT ControlEmbedding::SetClientSite(IOleClientSite* site) {
  return run([&] {
    if (!site) InPlaceDeactivate();
    set_site(site);
  });
}

HRESULT ControlEmbedding::GetClientSite(IOleClientSite** site) {
  if (!site) return E_POINTER;
  *site = ComPtr<IOleClientSite>(this->site()).detach();
  return S_OK;
}

HRESULT ControlEmbedding::Close(DWORD save) {
  const ComPtr<IUnknown> alive(identity());
  if (save != OLECLOSE_NOSAVE && dirty() && site()) site()->SaveObject();
  InPlaceDeactivate();
  if (advises_) advises_->SendOnClose();
  return S_OK;
}

HRESULT ControlEmbedding::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  if (!moniker) return E_POINTER;
  *moniker = nullptr;
  return E_NOTIMPL;
}

HRESULT ControlEmbedding::GetClipboardData(DWORD, IDataObject** data) {
  if (!data) return E_POINTER;
  *data = nullptr;
  return E_NOTIMPL;
}

HRESULT ControlEmbedding::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent, LPCRECT) {
  const ComPtr<IUnknown> alive(identity());
  switch (verb) {
    case OLEIVERB_INPLACEACTIVATE:
    case OLEIVERB_SHOW:
      return run([&] { activate_in_place(); });
    case OLEIVERB_PRIMARY:
    case OLEIVERB_UIACTIVATE:
      return run([&] {
        activate_in_place();
        activate_interface();
      });
    case OLEIVERB_HIDE:
      return InPlaceDeactivate();
    case OLEIVERB_DISCARDUNDOSTATE:
      return S_OK;
    case OLEIVERB_PROPERTIES:
    case properties_verb:
      return run([&] { show_properties(parent); });
    default:
      return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
  }
}

HRESULT ControlEmbedding::EnumVerbs(IEnumOLEVERB** verbs) {
  if (!verbs) return E_POINTER;
  *verbs = nullptr;
  return run([&] {
    *verbs = make_enumerator<IEnumOLEVERB, OLEVERB>({std::begin(control_verbs), std::end(control_verbs)});
  });
}

HRESULT ControlEmbedding::GetUserType(DWORD form, LPOLESTR* type) {
  if (!type) return E_POINTER;
  *type = nullptr;
  return ::OleRegGetUserType(clsid(), form, type);
}

HRESULT ControlEmbedding::GetUserClassID(CLSID* clsid) {
  if (!clsid) return E_POINTER;
  *clsid = this->clsid();
  return S_OK;
}

HRESULT ControlEmbedding::SetExtent(DWORD aspect, SIZEL* himetric) {
  if (!himetric) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (himetric->cx < 0 || himetric->cy < 0) return E_INVALIDARG;
  return run([&] { set_extent(*himetric); });
}

HRESULT ControlEmbedding::Advise(IAdviseSink* sink, DWORD* connection) {
  if (!connection) return E_POINTER;
  if (!advises_)
    if (const HRESULT result = ::CreateOleAdviseHolder(advises_.out()); FAILED(result)) return result;
  return advises_->Advise(sink, connection);
}

HRESULT ControlEmbedding::Unadvise(DWORD connection) {
  return advises_ ? advises_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT ControlEmbedding::EnumAdvise(IEnumSTATDATA** advises) {
  if (!advises) return E_POINTER;
  *advises = nullptr;
  return advises_ ? advises_->EnumAdvise(advises) : S_OK;
}

HRESULT ControlEmbedding::GetMiscStatus(DWORD aspect, DWORD* status) {
  if (!status) return E_POINTER;
  *status = aspect == DVASPECT_CONTENT ? misc_status() : 0;
  return S_OK;
}

void ControlEmbedding::tell_of_save() {
  if (advises_) advises_->SendOnSave();
}

}  // namespace tornby::automation
