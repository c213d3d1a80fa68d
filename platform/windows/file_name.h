// File names as the ANSI entry points take them.
#pragma once

#include <string>

#include "base/text.h"

namespace tornby::windows {

/// The name in the ANSI code page. Raises 52 (bad file name) for an empty name or one with a NUL.
std::string file_name(StringView name);

}  // namespace tornby::windows
