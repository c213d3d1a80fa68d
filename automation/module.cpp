#include "automation/module.h"

#include <atomic>

#include "automation/error_edge.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the linker's name for the start of this module

namespace tornby::automation {
namespace {

std::atomic<long> references = 0;

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
  ComPtr<ITypeLib> library;
  check(::LoadTypeLibEx(module_path().c_str(), REGKIND_NONE, library.out()));
  return library;
}

void add_module_reference() {
  ++references;
}
void release_module_reference() {
  --references;
}
long module_references() {
  return references;
}

}  // namespace tornby::automation
