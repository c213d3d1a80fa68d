// The DLL itself.
#pragma once

#include <string>

#include "automation/com.h"

namespace tornby::automation {

/// The full name of the DLL's file.
std::wstring module_path();

/// The type library that the DLL carries.
ComPtr<ITypeLib> load_type_library();

/// Objects and locks that keep the DLL loaded; COM asks for the count.
void add_module_reference();
void release_module_reference();
long module_references();

}  // namespace tornby::automation
