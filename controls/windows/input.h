// Messages of the pointer and the keyboard, as the controls understand them.
#pragma once

#include "controls/control.h"
#include "controls/windows/gdi.h"

namespace tornby::windows {

/// Where a pointer message happened, in the client area of its window.
Pointer pointer_of(LPARAM lparam);

/// The buttons that a pointer message says are down, as a sum.
std::int16_t held_buttons(WPARAM wparam);

/// Whether a message comes from pointer or keyboard, or stands for it.
bool is_input(UINT message);

/// Tells the control of a button that went down or up. False for any other message.
bool pass_button(Control& control, UINT message, Part part, Pointer at);

/// Tells the control of a key that went down or up; a handler may change the key, to 0 to swallow it. False for any
/// other message.
bool pass_key(Control& control, UINT message, Part part, std::int16_t& key_code);

/// Keys held now, as the sum of 1 shift, 2 control, 4 alt.
std::int16_t shift_state();

/// A typed character as key events report it: its code in the ANSI code page, of two bytes where it has two.
std::int16_t code_of(char16_t character);
char16_t character_of(std::int16_t code);

}  // namespace tornby::windows
