// Text of other kinds, made from the library's own and back. Every function takes every input: what is no text of its
// kind becomes U+FFFD, the replacement character, and what the other side lacks becomes its substitute there.
//
// The library's text is UTF-16. A surrogate without its other half is kept by the wide functions on Windows, where both
// kinds are the same units, and is U+FFFD elsewhere.
#pragma once

#include <string>
#include <string_view>

#include <tornby/base/text.h>
#include <tornby/platform/code_page.h>

namespace tornby {

/// UTF-8. Each byte, and each beginning of a character that breaks off, is one U+FFFD when it cannot be part of a
/// character: so are overlong forms, surrogates and what is above U+10FFFF, byte by byte. A byte-order mark is a
/// character like others.
String from_utf8(std::string_view text);
std::string to_utf8(StringView text);

/// The wide characters of the system: UTF-16 on Windows, UTF-32 on Linux.
String from_wide(std::wstring_view text);
std::wstring to_wide(StringView text);

/// The ANSI code page: of this system, or any other. A character that it lacks becomes its best substitute, mostly "?".
String from_ansi(std::string_view bytes, const AnsiCodePage& code_page = native_code_page());
std::string to_ansi(StringView text, const AnsiCodePage& code_page = native_code_page());

}  // namespace tornby
