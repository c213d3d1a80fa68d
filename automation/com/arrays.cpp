#include "automation/com/arrays.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "automation/com/convert.h"
#include "automation/com/error_edge.h"
#include "base/runtime_error.h"

namespace tornby::automation {
namespace {

/// A new array that is destroyed unless it is handed on.
class NewArray {
 public:
  NewArray(VARTYPE element, LONG lower, std::size_t count)
      : array_(::SafeArrayCreateVector(element, lower, static_cast<ULONG>(count))) {
    if (!array_) throw std::bad_alloc();
  }
  ~NewArray() {
    if (array_) ::SafeArrayDestroy(array_);
  }
  NewArray(const NewArray&) = delete;
  NewArray& operator=(const NewArray&) = delete;

  SAFEARRAY* get() const { return array_; }
  SAFEARRAY* detach() { return std::exchange(array_, nullptr); }

 private:
  SAFEARRAY* array_;
};

/// The elements of a caller's array while they are looked at.
class LockedArray {
 public:
  explicit LockedArray(SAFEARRAY* array) : array_(array) { check(::SafeArrayAccessData(array, &data_)); }
  ~LockedArray() { ::SafeArrayUnaccessData(array_); }
  LockedArray(const LockedArray&) = delete;
  LockedArray& operator=(const LockedArray&) = delete;

  void* data() const { return data_; }

 private:
  SAFEARRAY* array_;
  void* data_ = nullptr;
};

/// Of an array that is sound and has one dimension; VT_EMPTY for any other.
VARTYPE element_type(SAFEARRAY* array) {
  VARTYPE type = VT_EMPTY;
  const bool known = array && ::SafeArrayGetDim(array) == 1 && SUCCEEDED(::SafeArrayGetVartype(array, &type));
  return known && is_sound(*array) ? type : static_cast<VARTYPE>(VT_EMPTY);
}

/// Writes a value into an element of a new array, which then owns what the value refers to.
void put_element(void* data, std::size_t index, std::size_t size, VARTYPE type, OwnedVariant& value) {
  void* const element = static_cast<std::byte*>(data) + index * size;
  const VARIANT taken = value.detach();
  std::memcpy(element, type == VT_VARIANT ? static_cast<const void*>(&taken) : &taken.byref, size);
}

SAFEARRAY* converted_copy(SAFEARRAY* source, VARTYPE element) {
  const VARTYPE type = element_type(source);
  if (type != VT_VARIANT && type != VT_BSTR) throw ComError(DISP_E_TYPEMISMATCH);
  const SAFEARRAYBOUND& bound = source->rgsabound[0];
  NewArray copy(element, bound.lLbound, bound.cElements);
  const LockedArray from(source), to(copy.get());
  for (ULONG i = 0; i < bound.cElements; ++i) {
    VARIANT original;
    if (type == VT_VARIANT) {
      original = static_cast<VARIANT*>(from.data())[i];
    } else {
      original.vt = VT_BSTR;
      original.bstrVal = static_cast<BSTR*>(from.data())[i];
    }
    OwnedVariant value;
    if (!refers_to_something(original)) throw ComError(DISP_E_TYPEMISMATCH);
    check(element == VT_VARIANT ? ::VariantCopyInd(value.get(), &original)
                                : ::VariantChangeType(value.get(), &original, 0, element));
    put_element(to.data(), i, copy.get()->cbElements, element, value);
  }
  return copy.detach();
}

}  // namespace

bool is_sound(const SAFEARRAY& array) {
  if (array.cDims == 0) return false;
  for (USHORT i = 0; i < array.cDims; ++i) {
    const SAFEARRAYBOUND& bound = array.rgsabound[i];
    if (bound.cElements == 0) return true;
    if (std::int64_t{bound.lLbound} + bound.cElements - 1 > std::numeric_limits<LONG>::max()) return false;
  }
  return array.pvData != nullptr;
}

HRESULT convert_array(SAFEARRAY* source, VARTYPE element, VARIANT* converted) {
  ::VariantInit(converted);
  try {
    converted->parray = converted_copy(source, element);
    converted->vt = static_cast<VARTYPE>(VT_ARRAY | element);
    return S_OK;
  } catch (const ComError& error) {
    return error.result();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

LockedBytes::LockedBytes(SAFEARRAY** array) {
  if (!array) throw ComError(E_POINTER);
  if (!*array) return;
  if (element_type(*array) != VT_UI1) throw RuntimeError(StandardError::type_mismatch);
  void* data = nullptr;
  check(::SafeArrayAccessData(*array, &data));
  array_ = *array;
  bytes_ = {static_cast<const std::uint8_t*>(data), array_->rgsabound[0].cElements};
}

LockedBytes::~LockedBytes() {
  if (array_) ::SafeArrayUnaccessData(array_);
}

SAFEARRAY* to_byte_array(ByteView bytes) {
  NewArray array(VT_UI1, 0, bytes.size());
  void* data = nullptr;
  check(::SafeArrayAccessData(array.get(), &data));
  std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(data));
  ::SafeArrayUnaccessData(array.get());
  return array.detach();
}

SAFEARRAY* to_string_array(std::span<const String> strings) {
  NewArray array(VT_BSTR, 0, strings.size());
  void* data = nullptr;
  check(::SafeArrayAccessData(array.get(), &data));
  BSTR* next = static_cast<BSTR*>(data);
  try {
    for (const String& text : strings) *next++ = to_bstr(text);
  } catch (...) {
    ::SafeArrayUnaccessData(array.get());  // the array frees what it has got so far
    throw;
  }
  ::SafeArrayUnaccessData(array.get());
  return array.detach();
}

}  // namespace tornby::automation
