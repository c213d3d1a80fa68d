#include "automation/com/convert.h"

#include <limits>
#include <new>

#include "base/runtime_error.h"

namespace tornby::automation {

BSTR to_bstr(StringView text) {
  if (text.size() > std::numeric_limits<UINT>::max() / sizeof(OLECHAR)) throw std::bad_alloc();
  BSTR copy = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
  if (!copy) throw std::bad_alloc();
  return copy;
}

VARIANT to_variant(const Variant& value) {
  VARIANT out;
  ::VariantInit(&out);
  if (const auto* small = std::get_if<std::int16_t>(&value)) {
    out.vt = VT_I2;
    out.iVal = *small;
  } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
    out.vt = VT_I4;
    out.lVal = *number;
  } else if (const auto* text = std::get_if<String>(&value)) {
    out.bstrVal = to_bstr(*text);
    out.vt = VT_BSTR;
  }
  return out;
}

bool refers_to_something(const VARIANT& value) {
  if ((value.vt & VT_BYREF) == 0) return true;
  if (!value.byref) return false;
  if (value.vt != (VT_BYREF | VT_VARIANT)) return true;
  const VARIANT& variable = *value.pvarVal;
  return (variable.vt & VT_BYREF) == 0 || (variable.byref && variable.vt != (VT_BYREF | VT_VARIANT));
}

Variant from_variant(const VARIANT& value) {
  OwnedVariant plain;
  if (!refers_to_something(value)) throw RuntimeError(StandardError::type_mismatch);
  const HRESULT copied = ::VariantCopyInd(plain.get(), const_cast<VARIANT*>(&value));
  if (copied == E_OUTOFMEMORY) throw std::bad_alloc();
  if (FAILED(copied)) throw RuntimeError(StandardError::type_mismatch);
  switch (plain->vt) {
    case VT_EMPTY:
      return {};
    case VT_I2:
      return std::int16_t{plain->iVal};
    case VT_I4:
      return std::int32_t{plain->lVal};
    case VT_BSTR:
      return String(view(plain->bstrVal));
    case VT_NULL:
      throw RuntimeError(StandardError::invalid_use_of_null);
    default:
      break;
  }
  switch (::VariantChangeType(plain.get(), plain.get(), 0, VT_I4)) {
    case S_OK:
      return std::int32_t{plain->lVal};
    case DISP_E_OVERFLOW:
      throw RuntimeError(StandardError::overflow);
    case E_OUTOFMEMORY:
      throw std::bad_alloc();
    default:
      throw RuntimeError(StandardError::type_mismatch);
  }
}

}  // namespace tornby::automation
