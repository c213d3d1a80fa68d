// The texts that file dialogs take and give. A buffer may end anywhere; nothing is read behind its end.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace tornby::dialogs {

/// A caller's "|"-separated list of file types in the system's form: a NUL for each "|", two NULs at the end.
String convert_filter(StringView list);

/// A NUL, `length` spaces and a NUL. Raises 5 (invalid procedure call) for a negative length.
std::string name_buffer(std::int32_t length);

/// All before the first NUL.
StringView up_to_nul(StringView text);

/// All up to and with the last backslash; empty when there is none.
StringView folder_part(StringView path);
/// All behind the last backslash.
StringView file_part(StringView path);

/// How many files a buffer of the form "folder NUL name NUL name NUL NUL" or "path NUL NUL" names. One without two
/// closing NULs counts as one file.
std::int32_t count_files(StringView buffer);

}  // namespace tornby::dialogs
