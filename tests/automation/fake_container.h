// A container of our own: it counts what a control asks of it, and lets a test see that exactly that came.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "server.h"

namespace tornby::testing {

/// Lives on the test's stack; references to it are counted, and all must be gone in the end.
template <class... Interfaces>
class OnStack : public Interfaces... {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override { return --references_; }
  ULONG references() const { return references_; }

 private:
  ULONG references_ = 0;
};

/// The window that controls are placed in, and the site of one control.
class FakeContainer final
    : public OnStack<IOleClientSite, IOleInPlaceSite, IOleControlSite, ISimpleFrameSite, IDispatch> {
 public:
  FakeContainer();
  ~FakeContainer();
  FakeContainer(const FakeContainer&) = delete;
  FakeContainer& operator=(const FakeContainer&) = delete;

  /// The calls since the last question, in order, each followed by a blank.
  std::string calls() { return std::exchange(calls_, {}); }
  HWND window() const { return window_; }
  void add_ambient(DISPID id, const VARIANT& value) { ambients_[id] = value; }

  RECT place = {10, 10, 210, 60};
  RECT visible = {0, 0, 400, 300};
  bool allows_activation = true;
  std::function<bool(UINT message)> takes_message;  // of those to a control that others are placed in

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;

  HRESULT STDMETHODCALLTYPE SaveObject() override { return note("SaveObject"); }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
    *container = nullptr;
    return E_NOINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE ShowObject() override { return note("ShowObject"); }
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    *window = window_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override {
    note("CanInPlaceActivate");
    return allows_activation ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return note("OnInPlaceActivate"); }
  HRESULT STDMETHODCALLTYPE OnUIActivate() override { return note("OnUIActivate"); }
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* position,
                                             RECT* clip, OLEINPLACEFRAMEINFO* info) override;
  HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return note("OnUIDeactivate"); }
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return note("OnInPlaceDeactivate"); }
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT* wanted) override;

  HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return note("OnControlInfoChanged"); }
  HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return note("TranslateAccelerator"); }
  HRESULT STDMETHODCALLTYPE OnFocus(BOOL here) override { return note(here ? "OnFocus" : "OnFocusLost"); }
  HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return note("ShowPropertyFrame"); }

  HRESULT STDMETHODCALLTYPE PreMessageFilter(HWND, UINT message, WPARAM, LPARAM, LRESULT*, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE PostMessageFilter(HWND, UINT message, WPARAM, LPARAM, LRESULT*, DWORD cookie) override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                   UINT*) override;

  /// Who gets the new place when a control wants another size.
  IOleInPlaceObject* active = nullptr;

 private:
  HRESULT note(const std::string& call) {
    calls_ += call;
    calls_ += ' ';
    return S_OK;
  }

  HWND window_;
  std::string calls_;
  std::map<DISPID, VARIANT> ambients_;
};

/// Hears that a control looks different.
class FakeView final : public OnStack<IAdviseSink> {
 public:
  int changes = 0;
  std::string data;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM* medium) override {
    data += medium->tymed == TYMED_ENHMF && medium->hEnhMetaFile ? "picture " : "none ";
  }
  void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { ++changes; }
  void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
  void STDMETHODCALLTYPE OnSave() override {}
  void STDMETHODCALLTYPE OnClose() override {}
};

/// Hears a control's events and its notices of changed properties.
class FakeSink final : public OnStack<IDispatch, IPropertyNotifySink> {
 public:
  std::vector<DISPID> events;
  std::vector<DISPID> changes;
  std::function<void(DISPID, DISPPARAMS*)> on_event;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                   UINT*) override;
  HRESULT STDMETHODCALLTYPE OnChanged(DISPID id) override {
    changes.push_back(id);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }
};

/// A property bag in memory.
class FakeBag final : public OnStack<IPropertyBag> {
 public:
  ~FakeBag();

  std::map<std::wstring, VARIANT> values;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override;
  HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;
};

}  // namespace tornby::testing
