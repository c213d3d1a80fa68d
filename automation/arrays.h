// Arrays between COM and the classes.
#pragma once

#include <span>

#include "automation/com.h"
#include "base/text.h"

namespace tornby::automation {

/// A new array of the same bounds with every element converted to `element`, as a VARIANT that the caller clears.
/// Arrays of variants and of strings are accepted, of one dimension; others give DISP_E_TYPEMISMATCH.
HRESULT convert_array(SAFEARRAY* source, VARTYPE element, VARIANT* converted);

/// New arrays with lower bound 0, which the caller destroys.
SAFEARRAY* to_byte_array(ByteView bytes);
SAFEARRAY* to_string_array(std::span<const String> strings);

}  // namespace tornby::automation
