// What the DLL exports.
#include <cwchar>

#include "automation/com/error_edge.h"
#include "automation/server/class_factory.h"
#include "automation/server/module.h"
#include "automation/server/registration.h"

using namespace tornby::automation;

namespace {

constexpr const wchar_t* source = L"Tornby";

HRESULT enter(Scope scope) {
  return guarded(IID_NULL, source, [&] { register_classes(scope); });
}

HRESULT remove(Scope scope) {
  return guarded(IID_NULL, source, [&] { unregister_classes(scope); });
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** factory) {
  if (!factory) return E_POINTER;
  *factory = nullptr;
  const ClassEntry* entry = nullptr;
  const HRESULT result = guarded(IID_NULL, source, [&] { entry = find_class(clsid); });
  if (FAILED(result)) return result;
  return entry ? create_class_factory(*entry, iid, factory) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return may_unload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return enter(Scope::machine);
}
STDAPI DllUnregisterServer() {
  return remove(Scope::machine);
}

/// `regsvr32 /n /i:user` registers for the current user, without /i:user for the machine.
STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  const bool for_user = command_line && ::_wcsicmp(command_line, L"user") == 0;
  if (command_line && *command_line && !for_user) return E_INVALIDARG;
  const Scope scope = for_user ? Scope::user : Scope::machine;
  return install ? enter(scope) : remove(scope);
}
