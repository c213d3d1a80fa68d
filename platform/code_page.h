// The ANSI code page of this system.
#pragma once

#include <tornby/base/ansi_code_page.h>

namespace tornby {

/// The system's default ANSI code page on Windows, Windows-1252 elsewhere.
const AnsiCodePage& native_code_page();

}  // namespace tornby
