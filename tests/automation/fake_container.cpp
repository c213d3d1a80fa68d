#include "fake_container.h"

namespace tornby::testing {

FakeContainer::FakeContainer()
    : window_(::CreateWindowA("STATIC", "container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 300, nullptr, nullptr,
                              nullptr, nullptr)) {}

FakeContainer::~FakeContainer() {
  EXPECT_EQ(references(), 0u);
  ::DestroyWindow(window_);
}

HRESULT FakeContainer::QueryInterface(REFIID iid, void** object) {
  *object = nullptr;
  if (iid == IID_IUnknown || iid == IID_IOleClientSite) *object = static_cast<IOleClientSite*>(this);
  if (iid == IID_IOleInPlaceSite || iid == IID_IOleWindow) *object = static_cast<IOleInPlaceSite*>(this);
  if (iid == IID_IOleControlSite) *object = static_cast<IOleControlSite*>(this);
  if (iid == IID_ISimpleFrameSite) *object = static_cast<ISimpleFrameSite*>(this);
  if (iid == IID_IDispatch && !ambients_.empty()) *object = static_cast<IDispatch*>(this);
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT FakeContainer::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* position,
                                        RECT* clip, OLEINPLACEFRAMEINFO*) {
  *frame = nullptr;
  *document = nullptr;
  *position = place;
  *clip = visible;
  return note("GetWindowContext");
}

HRESULT FakeContainer::OnPosRectChange(const RECT* wanted) {
  note("OnPosRectChange");
  place = *wanted;
  if (active) active->SetObjectRects(&place, &visible);
  return S_OK;
}

HRESULT FakeContainer::PreMessageFilter(HWND, UINT message, WPARAM, LPARAM, LRESULT*, DWORD* cookie) {
  *cookie = message + 1;
  return takes_message && takes_message(message) ? S_FALSE : S_OK;
}

HRESULT FakeContainer::PostMessageFilter(HWND, UINT message, WPARAM, LPARAM, LRESULT*, DWORD cookie) {
  EXPECT_EQ(cookie, message + 1);
  return S_OK;
}

HRESULT FakeContainer::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
  note("Ambient" + std::to_string(id));
  const auto found = ambients_.find(id);
  return found == ambients_.end() ? DISP_E_MEMBERNOTFOUND : ::VariantCopy(result, &found->second);
}

HRESULT FakeView::QueryInterface(REFIID iid, void** object) {
  *object = iid == IID_IUnknown || iid == IID_IAdviseSink ? this : nullptr;
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT FakeSink::QueryInterface(REFIID iid, void** object) {
  *object = nullptr;
  if (iid == IID_IUnknown || iid == IID_IDispatch) *object = static_cast<IDispatch*>(this);
  if (iid == IID_IPropertyNotifySink) *object = static_cast<IPropertyNotifySink*>(this);
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT FakeSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*, UINT*) {
  events.push_back(id);
  if (on_event) on_event(id, parameters);
  return E_FAIL;  // a sink's failure is its own affair
}

FakeBag::~FakeBag() {
  for (auto& [name, value] : values) ::VariantClear(&value);
}

HRESULT FakeBag::QueryInterface(REFIID iid, void** object) {
  *object = iid == IID_IUnknown || iid == IID_IPropertyBag ? this : nullptr;
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT FakeBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
  const auto found = values.find(name);
  if (found == values.end()) return E_INVALIDARG;
  return ::VariantCopy(value, &found->second);
}

HRESULT FakeBag::Write(LPCOLESTR name, VARIANT* value) {
  VARIANT& kept = values[name];
  ::VariantInit(&kept);
  return ::VariantCopy(&kept, value);
}

}  // namespace tornby::testing
