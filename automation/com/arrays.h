// Arrays between COM and the classes.
#pragma once

#include <span>

#include "automation/com/com.h"
#include "base/text.h"

namespace tornby::automation {

/// Whether every element has an index, and is there: a descriptor without data is no array.
bool is_sound(const SAFEARRAY& array);

/// A new array of the same bounds with every element converted to `element`, as a VARIANT that the caller clears.
/// Arrays of variants and of strings are accepted, of one dimension; others give DISP_E_TYPEMISMATCH.
HRESULT convert_array(SAFEARRAY* source, VARTYPE element, VARIANT* converted);

/// The bytes of a caller's array, whatever its lower bound, for as long as this lives. A null array is empty.
/// Raises 13 (type mismatch) for one that is not a sound array of bytes with one dimension.
class LockedBytes {
 public:
  explicit LockedBytes(SAFEARRAY** array);
  ~LockedBytes();
  LockedBytes(const LockedBytes&) = delete;
  LockedBytes& operator=(const LockedBytes&) = delete;

  ByteView view() const { return bytes_; }

 private:
  SAFEARRAY* array_ = nullptr;
  ByteView bytes_;
};

/// New arrays with lower bound 0, which the caller destroys.
SAFEARRAY* to_byte_array(ByteView bytes);
SAFEARRAY* to_string_array(std::span<const String> strings);

}  // namespace tornby::automation
