// The system's own libraries that it does not look for in its own folder first.
#pragma once

#include "platform/windows/system.h"

namespace tornby::windows {

/// A function of a library in the system's folder, so that no file of the same name beside the program is taken for it.
/// The library stays loaded. Null when either is missing.
FARPROC find_system_function(const wchar_t* library, const char* function);

/// The same, as a function of that type.
template <class Function>
Function* system_function(const wchar_t* library, const char* function) {
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(find_system_function(library, function)));
}

}  // namespace tornby::windows
