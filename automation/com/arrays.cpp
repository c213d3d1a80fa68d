#include "automation/com/arrays.h"

#include <algorithm>
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

/// What SafeArrayPutElement wants: a pointer to the value, but a string or an object itself.
void* element_address(VARIANT& value, VARTYPE element) {
  switch (element) {
    case VT_VARIANT:
      return &value;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return value.byref;
    default:
      return &value.byref;
  }
}

void read_element(SAFEARRAY* source, VARTYPE type, LONG index, VARIANT& value) {
  if (type == VT_VARIANT) {
    check(::SafeArrayGetElement(source, &index, &value));
  } else {
    check(::SafeArrayGetElement(source, &index, &value.byref));
    value.vt = type;
  }
}

SAFEARRAY* converted_copy(SAFEARRAY* source, VARTYPE element) {
  VARTYPE type = VT_EMPTY;
  if (!source || ::SafeArrayGetDim(source) != 1 || FAILED(::SafeArrayGetVartype(source, &type)) ||
      (type != VT_VARIANT && type != VT_BSTR))
    throw ComError(DISP_E_TYPEMISMATCH);
  LONG lower = 0;
  LONG upper = -1;
  check(::SafeArrayGetLBound(source, 1, &lower));
  check(::SafeArrayGetUBound(source, 1, &upper));
  NewArray copy(element, lower, static_cast<std::size_t>(upper - lower + 1));
  for (LONG index = lower; index <= upper; ++index) {
    OwnedVariant value;
    read_element(source, type, index, *value);
    if (element != VT_VARIANT) check(::VariantChangeType(value.get(), value.get(), 0, element));
    check(::SafeArrayPutElement(copy.get(), &index, element_address(*value, element)));
  }
  return copy.detach();
}

}  // namespace

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
  VARTYPE type = VT_EMPTY;
  if (::SafeArrayGetDim(*array) != 1 || FAILED(::SafeArrayGetVartype(*array, &type)) || type != VT_UI1)
    throw RuntimeError(StandardError::type_mismatch);
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
