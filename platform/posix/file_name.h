// File names as this system takes them.
#pragma once

#include <string>

#include "base/text.h"

namespace tornby::posix {

/// The name in UTF-8. Raises 52 (bad file name) for an empty name, one with a NUL, or a lone surrogate.
std::string file_name(StringView name);

}  // namespace tornby::posix
