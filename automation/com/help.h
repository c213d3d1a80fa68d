// The help page beside the DLL, and the numbers of its anchors, which are the help contexts of the type library.
#pragma once

#include <string>

#include "automation/com/com.h"

namespace tornby::automation {

/// The full name of the page's file.
std::wstring help_file();

/// The anchor of an interface; 0 for one that the type library does not have.
DWORD help_context(REFIID iid);

/// Shows the page at an anchor, in whatever shows pages.
void show_help(HWND owner, DWORD context);

}  // namespace tornby::automation
