#include "automation/server/module.h"

#include <atomic>
#include <mutex>

#include "automation/com/error_edge.h"
#include "automation/com/lock.h"
#include "automation/com/member_table.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the linker's name for the start of this module

namespace tornby::automation {
namespace {

std::atomic<long> references = 0;

/// The type library of the moment. A plain pointer: when the process ends, COM may be gone before this module's data.
Lock library_lock;
ITypeLib* library = nullptr;

}  // namespace

std::wstring module_path() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        ::GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) throw ComError(HRESULT_FROM_WIN32(::GetLastError()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

ComPtr<ITypeLib> load_type_library() {
  const std::lock_guard lock(library_lock);
  if (!library) check(::LoadTypeLibEx(module_path().c_str(), REGKIND_NONE, &library));
  return ComPtr<ITypeLib>(library);
}

void add_module_reference() {
  ++references;
}
void release_module_reference() {
  --references;
}

bool may_unload() {
  if (references != 0) return false;
  forget_member_tables();
  const std::lock_guard lock(library_lock);
  ComPtr<ITypeLib>::adopt(std::exchange(library, nullptr));
  return true;
}

}  // namespace tornby::automation
