// Mnemonics: an ampersand in a caption marks the letter after it; two stand for an ampersand.
#pragma once

#include "base/text.h"

namespace tornby {

/// The marked letter, as it stands there, or 0.
char16_t mnemonic(StringView caption);

/// The caption as it is read out: without marks.
String without_mnemonic(StringView caption);

}  // namespace tornby
