// The form's menu.
#pragma once

#include <windows.h>

#include "form_state.h"

enum FileCommand : UINT { open_command = 100, check_command, exit_command };

/// It belongs to the window that it is given to.
HMENU make_menu();

/// Takes a command of the Label menu into the state; any other does nothing.
void choose(UINT command, FormState& state);

/// Marks the state's choices in the Label menu.
void mark_choices(HMENU menu, const FormState& state);
