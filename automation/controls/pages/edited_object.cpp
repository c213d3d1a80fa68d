#include "automation/controls/pages/edited_object.h"

#include <cerrno>
#include <cwchar>
#include <limits>

#include "automation/com/convert.h"
#include "automation/com/error_edge.h"

namespace tornby::automation {
namespace {

constexpr HRESULT invalid_value = CTL_E_INVALIDPROPERTYVALUE;

LONG parse_number(const PageProperty& property, const std::wstring& value) {
  const bool is_short = property.type == VT_I2;
  const LONG least = is_short ? std::numeric_limits<SHORT>::min() : std::numeric_limits<LONG>::min();
  const LONG most = is_short ? std::numeric_limits<SHORT>::max() : std::numeric_limits<LONG>::max();
  constexpr int decimal = 10;
  wchar_t* end = nullptr;
  errno = 0;
  const long long number = std::wcstoll(value.c_str(), &end, decimal);
  const bool is_number =
      end != value.c_str() && value.find_first_not_of(L" \t", end - value.c_str()) == std::wstring::npos;
  if (!is_number || errno == ERANGE || number < least || number > most)
    throw RefusedValue(invalid_value, property.name + L" takes a whole number from " + std::to_wstring(least) +
                                          L" to " + std::to_wstring(most) + L".");
  return static_cast<LONG>(number);
}

/// What an engine would show of a failed call; nothing is left of it.
struct CallError : EXCEPINFO {
  CallError() : EXCEPINFO() {}
  ~CallError() {
    ::SysFreeString(bstrSource);
    ::SysFreeString(bstrDescription);
    ::SysFreeString(bstrHelpFile);
  }
  CallError(const CallError&) = delete;
  CallError& operator=(const CallError&) = delete;
};

}  // namespace

VARIANT parse_value(const PageProperty& property, const std::wstring& value) {
  VARIANT parsed;
  ::VariantInit(&parsed);
  if (property.type == VT_BSTR) {
    parsed.bstrVal = to_bstr(StringView(reinterpret_cast<const char16_t*>(value.data()), value.size()));
  } else {
    const LONG number = parse_number(property, value);
    if (property.type == VT_I4)
      parsed.lVal = number;
    else
      parsed.iVal = static_cast<SHORT>(number);  // also a flag's
  }
  parsed.vt = property.type;
  return parsed;
}

EditedObject::EditedObject(IUnknown* object) {
  check(object->QueryInterface(IID_IDispatch, object_.out_void()));
}

std::vector<PageProperty> EditedObject::properties() const {
  ComPtr<ITypeInfo> info;
  ComPtr<IPerPropertyBrowsing> browsing;
  check(object_->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.out()));
  object_->QueryInterface(IID_IPerPropertyBrowsing, browsing.out_void());
  return page_properties(info.get(), browsing.get());
}

DISPID EditedObject::id_of(const PageProperty& property) const {
  std::wstring name = property.name;
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  check(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id));
  return id;
}

std::wstring EditedObject::read(const PageProperty& property) const {
  OwnedVariant value;
  DISPPARAMS none = {};
  CallError error;
  const HRESULT result = object_->Invoke(id_of(property), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                         value.get(), &error, nullptr);
  check(result == DISP_E_EXCEPTION && FAILED(error.scode) ? error.scode : result);
  if (property.type == VT_BSTR) {
    if (value->vt != VT_BSTR) check(::VariantChangeType(value.get(), value.get(), 0, VT_BSTR));
    return std::wstring(reinterpret_cast<const wchar_t*>(view(value->bstrVal).data()), ::SysStringLen(value->bstrVal));
  }
  check(::VariantChangeType(value.get(), value.get(), 0, property.type == VT_BOOL ? VT_BOOL : VT_I4));
  return std::to_wstring(property.type == VT_BOOL ? value->boolVal : value->lVal);
}

void EditedObject::write(const PageProperty& property, const std::wstring& value) const {
  OwnedVariant parsed(parse_value(property, value));
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters = {parsed.get(), &put, 1, 1};
  CallError error;
  const HRESULT result = object_->Invoke(id_of(property), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                                         &parameters, nullptr, &error, nullptr);
  if (SUCCEEDED(result)) return;
  std::wstring reason = error.bstrDescription ? error.bstrDescription : L"";
  if (reason.empty()) reason = property.name + L" does not take this value.";
  throw RefusedValue(result == DISP_E_EXCEPTION && FAILED(error.scode) ? error.scode : result, std::move(reason));
}

void EditedObject::lay_out() const {
  DISPPARAMS none = {};
  object_->Invoke(DISPID_REFRESH, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr);
}

void EditedObject::advise(IPropertyNotifySink* sink) {
  ComPtr<IConnectionPointContainer> points;
  if (FAILED(object_->QueryInterface(IID_IConnectionPointContainer, points.out_void()))) return;
  if (FAILED(points->FindConnectionPoint(IID_IPropertyNotifySink, notices_.out()))) return;
  if (FAILED(notices_->Advise(sink, &cookie_))) notices_ = ComPtr<IConnectionPoint>();
}

void EditedObject::unadvise() {
  if (notices_) notices_->Unadvise(cookie_);
  notices_ = ComPtr<IConnectionPoint>();
}

}  // namespace tornby::automation
