// Values between COM and the classes.
#pragma once

#include "automation/com/arrays.h"
#include "automation/com/com.h"
#include "base/text.h"
#include "base/variant.h"

namespace tornby::automation {

static_assert(sizeof(OLECHAR) == sizeof(char16_t));

/// The text of a BSTR; a null BSTR is empty text.
inline StringView view(BSTR text) {
  return {reinterpret_cast<const char16_t*>(text), ::SysStringLen(text)};
}

/// A new BSTR, which the caller frees.
BSTR to_bstr(StringView text);

/// The automation boolean: -1 or 0.
inline VARIANT_BOOL to_boolean(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}
inline bool from_boolean(VARIANT_BOOL value) {
  return value != VARIANT_FALSE;
}

/// A new VARIANT, which the caller clears: VT_EMPTY, VT_I2, VT_I4 or VT_BSTR.
VARIANT to_variant(const Variant& value);

/// False for a reference to nothing, also inside a script's variable, which the system's conversions would follow.
bool refers_to_something(const VARIANT& value);

/// Empty, 16-bit and 32-bit integers and strings as they are, also through a reference; all other numbers as a rounded
/// 32-bit integer. Raises 94 for Null, 6 for a number that does not fit, 13 for what is no number.
Variant from_variant(const VARIANT& value);

// What a result argument receives. Each form of put takes the result of a member to the argument's type.
inline void put(LONG* out, std::int32_t value) {
  *out = value;
}
inline void put(SHORT* out, std::int16_t value) {
  *out = value;
}
inline void put(SHORT* out, bool value) {
  *out = to_boolean(value);
}
inline void put(OLE_COLOR* out, std::uint32_t value) {
  *out = value;
}
inline void put(BSTR* out, StringView value) {
  *out = to_bstr(value);
}
inline void put(SAFEARRAY** out, ByteView value) {
  *out = to_byte_array(value);
}
inline void put(VARIANT* out, const Variant& value) {
  *out = to_variant(value);
}
template <class Interface, class Object>
void put(Interface** out, ComPtr<Object> value) {
  *out = value.detach();
}

}  // namespace tornby::automation
