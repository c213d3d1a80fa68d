// The DLL itself.
#pragma once

#include <string>

#include "automation/com/com.h"

namespace tornby::automation {

/// The full name of the DLL's file.
std::wstring module_path();

/// The type library that the DLL carries. Reading it takes long, so it is kept until the DLL may be unloaded.
ComPtr<ITypeLib> load_type_library();

/// Objects and locks that keep the DLL loaded; COM asks for the count.
void add_module_reference();
void release_module_reference();

/// Whether nothing needs the DLL any more; then it holds nothing either.
bool may_unload();

}  // namespace tornby::automation
