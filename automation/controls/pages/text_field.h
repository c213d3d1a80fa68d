// Edit fields of several lines in a dialog.
#pragma once

#include <windows.h>

namespace tornby::automation {

/// Leaves Tab, Enter and Escape to the dialog, as in fields of one line, and selects the text on the way in;
/// Ctrl+Enter begins a new line.
void keep_to_dialog_keys(HWND edit);

}  // namespace tornby::automation
