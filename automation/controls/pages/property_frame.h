// The frame that the verb Properties shows where the container has none.
#pragma once

#include <string>

#include "automation/com/com.h"

namespace tornby::automation {

/// Shows the pages of an object until the user closes them: in the system's frame, or in one of our own where that
/// fails or never applies what its pages hold, as Wine's. Our own page need not be registered. Pages that cannot be
/// created are left out; raises CLASS_E_CLASSNOTAVAILABLE when none is left.
void show_property_frame(HWND owner, const std::wstring& caption, IUnknown* object, const CAUUID& pages);

}  // namespace tornby::automation
