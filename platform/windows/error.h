// System error numbers as run-time errors.
#pragma once

#include <cstdint>

#include "base/runtime_error.h"

namespace tornby::windows {

/// The run-time error for a `GetLastError` value that a file operation left.
RuntimeError file_error(std::uint32_t system_error);

}  // namespace tornby::windows
