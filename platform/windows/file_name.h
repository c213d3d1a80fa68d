// File names as the system's wide entry points take them.
#pragma once

#include <string>

#include <tornby/base/text.h>

namespace tornby::windows {

/// The full name, in the form that may be of any length, of what the ANSI entry points would find by `name`: its
/// characters are those that the ANSI code page has. Raises 52 (bad file name) for an empty name or one with a NUL.
std::wstring file_name(StringView name);

/// The name with `ending` and, from 2 on, the number added; cut off before them where it would be too long.
std::wstring name_beside(std::wstring name, const wchar_t* ending, int number);

}  // namespace tornby::windows
