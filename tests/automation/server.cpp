#include "server.h"

#include <algorithm>

extern "C" void SetOaNoCache();  // which no header declares

namespace tornby::testing {

std::wstring dll_path() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.find_last_of(L'\\') + 1) + L"tornby.dll";
}

Server::Server() : library_(nullptr) {
  SetOaNoCache();  // so that a freed string is freed
  EXPECT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
  library_ = ::LoadLibraryW(dll_path().c_str());
  if (!library_) ADD_FAILURE() << "tornby.dll does not load: " << ::GetLastError();
}

Server::~Server() {
  if (library_) ::FreeLibrary(library_);
  ::CoUninitialize();
}

ComPtr<IClassFactory> Server::factory(REFCLSID clsid) const {
  using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
  ComPtr<IClassFactory> factory;
  const auto get = reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(entry("DllGetClassObject")));
  EXPECT_EQ(get(clsid, IID_IClassFactory, factory.out_void()), S_OK);
  return factory;
}

bool Server::is_idle() const {
  using CanUnloadNow = HRESULT(WINAPI*)();
  return reinterpret_cast<CanUnloadNow>(reinterpret_cast<void*>(entry("DllCanUnloadNow")))() == S_OK;
}

ManifestActivation::ManifestActivation() {
  const std::wstring dll = dll_path();
  const std::wstring manifest = dll.substr(0, dll.find_last_of(L'\\') + 1) + L"Tornby.Components.manifest";
  ACTCTXW description = {};
  description.cbSize = sizeof description;
  description.lpSource = manifest.c_str();
  context_ = ::CreateActCtxW(&description);
  EXPECT_NE(context_, INVALID_HANDLE_VALUE) << ::GetLastError();
  EXPECT_TRUE(::ActivateActCtx(context_, &cookie_));
}

ManifestActivation::~ManifestActivation() {
  ::DeactivateActCtx(0, cookie_);
  ::ReleaseActCtx(context_);
}

VARIANT long_variant(LONG value) {
  VARIANT variant;
  ::VariantInit(&variant);
  variant.vt = VT_I4;
  variant.lVal = value;
  return variant;
}

VARIANT short_variant(SHORT value) {
  VARIANT variant;
  ::VariantInit(&variant);
  variant.vt = VT_I2;
  variant.iVal = value;
  return variant;
}

VARIANT string_variant(const wchar_t* text) {
  VARIANT variant;
  ::VariantInit(&variant);
  variant.vt = VT_BSTR;
  variant.bstrVal = ::SysAllocString(text);
  return variant;
}

VARIANT variable(VARIANT* value) {
  VARIANT variant;
  ::VariantInit(&variant);
  variant.vt = VT_BYREF | VT_VARIANT;
  variant.pvarVal = value;
  return variant;
}

void call(Outcome& outcome, IDispatch* object, const wchar_t* member, WORD flags,
          std::initializer_list<VARIANT> arguments) {
  LPOLESTR name = const_cast<LPOLESTR>(member);
  DISPID id = DISPID_UNKNOWN;
  ASSERT_EQ(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), S_OK);
  std::vector<VARIANT> reversed(arguments);
  std::reverse(reversed.begin(), reversed.end());
  DISPID put = DISPID_PROPERTYPUT;
  const bool writes = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS parameters = {reversed.data(), writes ? &put : nullptr, static_cast<UINT>(reversed.size()),
                           writes ? 1u : 0u};
  EXCEPINFO exception = {};
  UINT bad_argument = 0;
  ::VariantClear(outcome.value.get());
  outcome.result = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, outcome.value.get(),
                                  &exception, &bad_argument);
  outcome.error = exception.scode;
  outcome.description = exception.bstrDescription ? exception.bstrDescription : L"";
  outcome.source = exception.bstrSource ? exception.bstrSource : L"";
  ::SysFreeString(exception.bstrDescription);
  ::SysFreeString(exception.bstrSource);
  ::SysFreeString(exception.bstrHelpFile);
}

}  // namespace tornby::testing
