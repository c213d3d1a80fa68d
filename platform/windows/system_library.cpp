#include "platform/windows/system_library.h"

#include <string>

namespace tornby::windows {

FARPROC find_system_function(const wchar_t* library, const char* function) {
  std::wstring path(::GetSystemDirectoryW(nullptr, 0), L'\0');
  path.resize(::GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
  const HMODULE module = ::LoadLibraryW((path + L'\\' + library).c_str());
  return module ? ::GetProcAddress(module, function) : nullptr;
}

}  // namespace tornby::windows
