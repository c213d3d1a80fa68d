// Property pages in a property sheet of the system's common controls.
#pragma once

#include <span>
#include <string>

#include "automation/com/com.h"

namespace tornby::automation {

/// Shows those of the pages that can be created, with OK, Cancel, Apply and Help, until the user closes them. Raises
/// CLASS_E_CLASSNOTAVAILABLE when there is none.
void show_property_sheet(HWND owner, const std::wstring& caption, IUnknown* object, std::span<const CLSID> pages);

}  // namespace tornby::automation
