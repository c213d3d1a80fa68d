// Any code page that Windows knows, by its number.
#pragma once

#include <memory>

#include "base/ansi_code_page.h"

namespace tornby::windows {

/// The code page of that number, such as 1252 or 932. Single-byte code pages become tables; the others ask the system.
std::unique_ptr<const AnsiCodePage> make_code_page(unsigned identifier);

}  // namespace tornby::windows
