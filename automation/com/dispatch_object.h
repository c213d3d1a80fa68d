// What every class object shares: identity, late binding, class information and error conversion.
#pragma once

#include <new>
#include <type_traits>

#include "automation/com/convert.h"
#include "automation/com/counted.h"
#include "automation/com/late_binding.h"

namespace tornby::automation {

/// An object with one dual interface, and More that a derived class implements and names in find_interface.
template <class Interface, class... More>
class DispatchObject : public Counted<Interface, ISupportErrorInfo, IProvideClassInfo2, More...> {
 public:
  /// `source` is what errors name as theirs, such as "Tornby.clsCRC"; `clsid` is CLSID_NULL for an object that only
  /// other objects create, `events` the source dispinterface or IID_NULL. All three are kept by reference.
  explicit DispatchObject(const wchar_t* source, REFCLSID clsid = CLSID_NULL, REFIID events = IID_NULL)
      : source_(source), clsid_(clsid), events_(events), binding_(__uuidof(Interface)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface))
      *object = static_cast<Interface*>(this);
    else if (iid == IID_ISupportErrorInfo)
      *object = static_cast<ISupportErrorInfo*>(this);
    else if (clsid_ != CLSID_NULL && (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2))
      *object = static_cast<IProvideClassInfo2*>(this);
    else
      *object = find_interface(iid);
    if (!*object) return E_NOINTERFACE;
    this->AddRef();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return this->act([&] { *info = binding_.type_info().detach(); });
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    HRESULT result = S_OK;
    const HRESULT failure = this->act([&] { result = binding_.find(names, count, ids); });
    return FAILED(failure) ? failure : result;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* exception, UINT* bad_argument) override {
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    HRESULT outcome = S_OK;
    const HRESULT failure = this->act([&] {
      outcome = binding_.invoke(static_cast<Interface*>(this), id, flags, parameters, result, exception, bad_argument);
    });
    return FAILED(failure) ? failure : outcome;
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
    return iid == __uuidof(Interface) ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = nullptr;
    return this->act([&] { check(load_type_library()->GetTypeInfoOfGuid(clsid_, info)); });
  }
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) override {
    if (!guid) return E_POINTER;
    *guid = events_;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID && events_ != IID_NULL ? S_OK : E_INVALIDARG;
  }

 protected:
  /// A further interface of the object, not counted, or null.
  virtual void* find_interface(REFIID) { return nullptr; }

  /// Runs a member that has no result.
  template <class Action>
  HRESULT act(Action&& action) noexcept {
    return guarded(__uuidof(Interface), source_, action);
  }

  /// Runs a member and puts what it returns into its result argument, which is empty when it fails.
  template <class Result, class Action>
  HRESULT answer(Result* result, Action&& action) noexcept {
    static_assert(std::is_trivial_v<Result>);
    if (!result) return E_POINTER;
    *result = Result{};
    return act([&] { put(result, action()); });
  }

  /// Runs a member that changes a text of the caller's and returns another. Both arrive, or neither.
  template <class Action>
  HRESULT change(BSTR* text, BSTR* result, Action&& action) noexcept {
    if (!text || !result) return E_POINTER;
    *result = nullptr;
    return act([&] {
      String value(view(*text));
      OwnedVariant answered(to_variant(action(value)));
      ::SysFreeString(std::exchange(*text, to_bstr(value)));
      *result = answered.detach().bstrVal;
    });
  }

 private:
  const wchar_t* source_;
  const CLSID& clsid_;
  const IID& events_;
  LateBinding binding_;
};

}  // namespace tornby::automation
