// What the DLL exports.
#include <cwchar>

#include "automation/com/error_edge.h"
#include "automation/server/class_factory.h"
#include "automation/server/module.h"
#include "automation/server/registration.h"
#include "automation/server/run_time.h"

using namespace tornby::automation;

namespace {

constexpr const wchar_t* source = L"Tornby";

/// What the entries answer on a processor that cannot run the rest of the DLL.
constexpr HRESULT processor_too_old = HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);

bool processor_suits() {
  return ::IsProcessorFeaturePresent(PF_XMMI64_INSTRUCTIONS_AVAILABLE) != FALSE;
}

HRESULT enter(Scope scope) {
  if (!processor_suits()) return processor_too_old;
  return guarded(IID_NULL, source, [&] { register_classes(scope); });
}

HRESULT remove(Scope scope) {
  if (!processor_suits()) return processor_too_old;
  return guarded(IID_NULL, source, [&] { unregister_classes(scope); });
}

}  // namespace

#ifndef _WIN64
extern "C" BOOL WINAPI DllMainCRTStartup(HINSTANCE module, DWORD reason, LPVOID reserved);

/// Where the system enters the DLL. Without SSE2 not even the initialisation may run; the DLL then stays loaded so that
/// whoever asks it for a class learns why there is none.
extern "C" BOOL WINAPI start_tornby(HINSTANCE module, DWORD reason, LPVOID reserved) {
  return processor_suits() ? DllMainCRTStartup(module, reason, reserved) : TRUE;
}
#endif

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** factory) {
  if (!factory) return E_POINTER;
  *factory = nullptr;
  if (!processor_suits()) return processor_too_old;
  const ClassEntry* entry = nullptr;
  prepare_run_time();
  const HRESULT result = guarded(IID_NULL, source, [&] { entry = find_class(clsid); });
  if (FAILED(result)) return result;
  return entry ? create_class_factory(*entry, iid, factory) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  if (!processor_suits()) return S_OK;
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
