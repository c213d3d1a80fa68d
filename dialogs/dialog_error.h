// The texts of the system's dialog errors.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace tornby::dialogs {

/// The text for an extended error code; "Unknown Error" for one without a text of its own.
StringView error_text(std::int32_t code);

}  // namespace tornby::dialogs
