// What a C++ client of automation objects needs: results that are checked, pointers, strings and values that let go of
// what they hold, and a receiver of events. It needs nothing but Windows; copy it.
#pragma once

#include <ocidl.h>
#include <oleauto.h>
#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace com {

/// A call that failed: its number as scripts know it, and the text that the object left.
struct Error {
  long number;
  std::wstring text;

  Error(HRESULT result, std::wstring description) : number(result), text(std::move(description)) {
    if (HRESULT_FACILITY(result) == FACILITY_CONTROL) number = HRESULT_CODE(result);  // 0x800A0009 is error 9
  }
};

class String {
 public:
  String() = default;
  explicit String(std::wstring_view text) : text_(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (!text_) throw Error(E_OUTOFMEMORY, L"out of memory");
  }
  String(String&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  String& operator=(String&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~String() { ::SysFreeString(text_); }

  operator BSTR() const { return text_; }  // as members take it
  BSTR* out() {
    ::SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  std::wstring_view view() const { return {text_ ? text_ : L"", ::SysStringLen(text_)}; }

 private:
  BSTR text_ = nullptr;
};

class Value : public VARIANT {
 public:
  Value() { ::VariantInit(this); }
  explicit Value(long number) : Value() {
    vt = VT_I4;
    lVal = number;
  }
  explicit Value(bool truth) : Value() {
    vt = VT_BOOL;
    boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
  }
  explicit Value(std::wstring_view text) : Value() {
    vt = VT_BSTR;
    bstrVal = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!bstrVal) throw Error(E_OUTOFMEMORY, L"out of memory");
  }
  explicit Value(const wchar_t* text) : Value(std::wstring_view(text)) {}
  Value(Value&& other) noexcept : VARIANT(other) { other.vt = VT_EMPTY; }
  Value& operator=(Value&& other) noexcept {
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
    return *this;
  }
  ~Value() { ::VariantClear(this); }

  std::wstring_view text() const {
    if (vt != VT_BSTR) throw Error(DISP_E_TYPEMISMATCH, L"no text");
    return {bstrVal ? bstrVal : L"", ::SysStringLen(bstrVal)};
  }
  long number() const {
    if (vt != VT_I4) throw Error(DISP_E_TYPEMISMATCH, L"no long number");
    return lVal;
  }
};

/// A reference to an object.
template <class Interface>
class Ref {
 public:
  Ref() = default;
  Ref(const Ref& other) : object_(other.object_) {
    if (object_) object_->AddRef();
  }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_) object_->Release();
  }

  Interface* operator->() const { return object_; }
  Interface* get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  Interface** out() {
    *this = Ref();
    return &object_;
  }

 private:
  Interface* object_ = nullptr;
};

/// What the system says of a result, for calls that leave no text: "Class not registered" for example.
inline std::wstring system_text(HRESULT result) {
  wchar_t text[256] = {};
  ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
                   static_cast<DWORD>(result), 0, text, 256, nullptr);
  return text;
}

/// Throws when a call has failed. Ask at once: the next call takes the text away.
inline void check(HRESULT result) {
  if (SUCCEEDED(result)) return;
  Ref<IErrorInfo> info;
  String text;
  if (::GetErrorInfo(0, info.out()) == S_OK) info->GetDescription(text.out());
  throw Error(result, text.view().empty() ? system_text(result) : std::wstring(text.view()));
}

template <class Interface>
Ref<Interface> create(const CLSID& id) {
  Ref<Interface> object;
  check(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                           reinterpret_cast<void**>(object.out())));
  return object;
}

template <class Interface, class From>
Ref<Interface> as(const Ref<From>& object) {
  Ref<Interface> other;
  check(object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(other.out())));
  return other;
}

/// COM for this thread, windows and controls included. Let go of every object before it ends.
struct Apartment {
  Apartment() { check(::OleInitialize(nullptr)); }
  ~Apartment() { ::OleUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// Whether every object of that DLL has been let go of: a check while you write.
inline bool all_released(const wchar_t* dll) {
  const HMODULE module = ::GetModuleHandleW(dll);
  if (!module) return true;
  const auto can_unload =
      reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(::GetProcAddress(module, "DllCanUnloadNow")));
  return can_unload && can_unload() == S_OK;
}

/// Hears the events of an object for as long as it lives. A handler gets the event's number and its arguments, the last
/// one first.
class Events final : private IDispatch {
 public:
  using Handler = std::function<void(DISPID event, DISPPARAMS& arguments)>;

  /// source: the interface of the events, __uuidof(DkelHyperLabelEvents) for example.
  template <class Interface>
  Events(const Ref<Interface>& object, const IID& source, Handler handler)
      : source_(source), handler_(std::move(handler)) {
    check(as<IConnectionPointContainer>(object)->FindConnectionPoint(source, point_.out()));
    check(point_->Advise(this, &cookie_));
  }
  ~Events() { point_->Unadvise(cookie_); }
  Events(const Events&) = delete;
  Events& operator=(const Events&) = delete;

 private:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    const bool known = wanted == source_ || wanted == __uuidof(IDispatch) || wanted == __uuidof(IUnknown);
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  // Its owner holds it, and takes it out of the object's list in time: there is nothing to count.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    try {
      handler_(event, *arguments);
    } catch (...) {  // must not get into the object
      return E_FAIL;
    }
    return S_OK;
  }

  IID source_;
  Handler handler_;
  Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace com
