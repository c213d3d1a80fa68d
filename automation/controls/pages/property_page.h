// The property page of the controls: all that the system's pages for colours, fonts and pictures do not hold.
#pragma once

#include "automation/com/com.h"

namespace tornby::automation {

/// As in the table of classes.
constexpr CLSID property_page_id = {0x3D0B6C1E, 0x5E0B, 0x4E37, {0x9A, 0x3C, 0x0D, 0x6F, 0x4B, 0x2E, 0x91, 0x58}};

/// Where the help page tells of it.
constexpr DWORD property_page_help = 1400;

/// The page as frames use it: IPropertyPage2. It takes any objects that describe themselves, several at once too.
HRESULT create_PropertyPage(REFIID iid, void** object);

}  // namespace tornby::automation
