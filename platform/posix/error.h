// System error numbers as run-time errors.
#pragma once

#include "base/runtime_error.h"

namespace tornby::posix {

/// The run-time error for an `errno` that a file operation left.
RuntimeError file_error(int system_error);

}  // namespace tornby::posix
