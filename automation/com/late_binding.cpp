#include "automation/com/late_binding.h"

#include <cstdint>
#include <limits>
#include <list>
#include <vector>

#include "automation/com/arrays.h"
#include "automation/com/convert.h"

namespace tornby::automation {
namespace {

bool is_script_variable(const VARIANT& argument) {
  return argument.vt == (VT_BYREF | VT_VARIANT);
}

/// False for an array that the system's conversions would stumble over.
bool holds_sound_array(const VARIANT& argument) {
  const VARIANT& value = is_script_variable(argument) ? *argument.pvarVal : argument;
  if ((value.vt & VT_ARRAY) == 0) return true;
  SAFEARRAY* const array = (value.vt & VT_BYREF) != 0 ? *value.pparray : value.parray;
  return !array || is_sound(*array);
}

VARIANT reference_to(VARIANT& variable) {
  VARIANT reference;
  ::VariantInit(&reference);
  reference.vt = static_cast<VARTYPE>(VT_BYREF | variable.vt);
  reference.byref = &variable.byref;  // all members of the union start here
  return reference;
}

/// The arguments of one call, as the type information can pass them on.
class Arguments {
 public:
  Arguments(const DISPPARAMS& parameters, const Member& member) {
    if ((!parameters.rgvarg && parameters.cArgs > 0) || (!parameters.rgdispidNamedArgs && parameters.cNamedArgs > 0) ||
        parameters.cNamedArgs > parameters.cArgs) {
      failure_ = E_INVALIDARG;
      return;
    }
    if (parameters.cArgs > member.parameters.size()) {
      failure_ = DISP_E_BADPARAMCOUNT;
      return;
    }
    values_.assign(parameters.rgvarg, parameters.rgvarg + parameters.cArgs);
    for (UINT i = 0; i < parameters.cArgs && SUCCEEDED(failure_); ++i) {
      bad_argument_ = i;
      const std::size_t position = position_of(parameters, i, member);
      failure_ =
          position < member.parameters.size() ? prepare(values_[i], member.parameters[position]) : DISP_E_PARAMNOTFOUND;
    }
  }

  HRESULT failure() const { return failure_; }
  UINT bad_argument() const { return bad_argument_; }
  VARIANT* data() { return values_.data(); }

 private:
  /// Arguments come last first, the named ones in front.
  static std::size_t position_of(const DISPPARAMS& parameters, UINT index, const Member& member) {
    if (index >= parameters.cNamedArgs) return parameters.cArgs - 1 - index;
    const DISPID name = parameters.rgdispidNamedArgs[index];
    return name == DISPID_PROPERTYPUT ? member.parameters.size() - 1 : static_cast<std::size_t>(name);
  }

  HRESULT prepare(VARIANT& argument, const Parameter& parameter) {
    if (!refers_to_something(argument)) return E_INVALIDARG;
    if (!holds_sound_array(argument)) return DISP_E_TYPEMISMATCH;
    switch (parameter.kind) {
      case Parameter::Kind::value:
        return S_OK;
      case Parameter::Kind::reference:
        return pass_reference(argument, parameter.type);
      case Parameter::Kind::array:
        return pass_array(argument, parameter.type);
      case Parameter::Kind::object:
        return pass_null_object(argument);
      case Parameter::Kind::color:
        return pass_color(argument, parameter.type);
    }
    return S_OK;
  }

  static HRESULT pass_color(VARIANT& argument, VARTYPE wanted) {
    OwnedVariant number;
    if (const HRESULT result = ::VariantChangeType(number.get(), &argument, 0, VT_I8); FAILED(result)) return result;
    if (number->llVal < std::numeric_limits<std::int32_t>::min() ||
        number->llVal > std::numeric_limits<std::uint32_t>::max())
      return DISP_E_OVERFLOW;
    ::VariantInit(&argument);
    argument.vt = wanted;
    argument.ulVal = static_cast<ULONG>(number->llVal);
    return S_OK;
  }

  HRESULT pass_reference(VARIANT& argument, VARTYPE wanted) {
    if (argument.vt == (VT_BYREF | wanted)) return S_OK;
    VARIANT* variable = &argument;
    if (is_script_variable(argument)) {
      variable = argument.pvarVal;
      if (variable->vt == (VT_BYREF | wanted)) {
        argument = *variable;
        return S_OK;
      }
    } else {  // a value: the member's change to it is lost, as the caller must expect
      variable = copies_.emplace_back().get();
      if (const HRESULT result = ::VariantCopyInd(variable, &argument); FAILED(result)) return result;
    }
    if ((wanted & VT_ARRAY) != 0 && variable->vt != wanted) {
      argument = *variable;
      if (const HRESULT result = pass_array(argument, wanted); FAILED(result)) return result;
      if (argument.vt != wanted || is_script_variable(*variable)) return DISP_E_TYPEMISMATCH;
      variable = copies_.back().get();  // an array of another type: the member's change to it is lost
    } else if (variable->vt != wanted) {
      if (const HRESULT result = ::VariantChangeType(variable, variable, 0, wanted); FAILED(result)) return result;
    }
    argument = reference_to(*variable);
    return S_OK;
  }

  HRESULT pass_array(VARIANT& argument, VARTYPE wanted) {
    if (is_script_variable(argument)) argument = *argument.pvarVal;
    if (argument.vt == wanted) return S_OK;
    SAFEARRAY* array = nullptr;
    if (argument.vt == (VT_ARRAY | VT_VARIANT)) array = argument.parray;
    if (argument.vt == (VT_BYREF | VT_ARRAY | VT_VARIANT)) array = *argument.pparray;
    if (!array) return S_OK;  // the type information knows the rest
    VARIANT converted;
    const HRESULT result = convert_array(array, static_cast<VARTYPE>(wanted & ~VT_ARRAY), &converted);
    if (FAILED(result)) return result;
    copies_.emplace_back(converted);
    argument = converted;
    return S_OK;
  }

  static HRESULT pass_null_object(VARIANT& argument) {
    const VARIANT& value = is_script_variable(argument) ? *argument.pvarVal : argument;
    if (value.vt != VT_NULL) return S_OK;
    ::VariantInit(&argument);
    argument.vt = VT_DISPATCH;
    argument.pdispVal = nullptr;
    return S_OK;
  }

  std::vector<VARIANT> values_;     // shallow: the caller or copies_ owns what they refer to
  std::list<OwnedVariant> copies_;  // does not move them
  HRESULT failure_ = S_OK;
  UINT bad_argument_ = 0;
};

/// Scripts can look into arrays of variants only.
HRESULT make_readable_by_scripts(VARIANT* result) {
  if (result->vt != (VT_ARRAY | VT_BSTR)) return S_OK;
  OwnedVariant strings(*result);
  ::VariantInit(result);
  return convert_array(strings->parray, VT_VARIANT, result);
}

/// What an engine shows of a member's failure, and the answer to it.
HRESULT report(HRESULT failure, EXCEPINFO* exception) {
  ComPtr<IErrorInfo> info;
  if (exception) {
    *exception = {};
    exception->scode = failure;
    if (::GetErrorInfo(0, info.out()) == S_OK) {
      info->GetDescription(&exception->bstrDescription);
      info->GetSource(&exception->bstrSource);
      info->GetHelpFile(&exception->bstrHelpFile);
      info->GetHelpContext(&exception->dwHelpContext);
    }
  }
  return DISP_E_EXCEPTION;
}

/// Reads a property without parameters: there is nothing for the type library to convert.
HRESULT read_plain(IDispatch* target, const Member& member, VARIANT* result, EXCEPINFO* exception) {
  using Read = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, void*);
  const Read read = (*reinterpret_cast<Read**>(target))[member.slot];
  OwnedVariant value;
  if (member.plain_result == VT_VARIANT) {
    if (const HRESULT failure = read(target, value.get()); FAILED(failure)) return report(failure, exception);
  } else {
    if (const HRESULT failure = read(target, &value->byref); FAILED(failure)) return report(failure, exception);
    value->vt = member.returns_color ? static_cast<VARTYPE>(VT_I4) : member.plain_result;
  }
  if (result) *result = value.detach();
  return S_OK;
}

constexpr WORD puts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

}  // namespace

const MemberTable& LateBinding::table() {
  if (!table_) table_ = member_table(interface_id_);
  return *table_;
}

ComPtr<ITypeInfo> LateBinding::type_info() {
  return ComPtr<ITypeInfo>(table().type_info());
}

HRESULT LateBinding::find(LPOLESTR* names, UINT count, DISPID* ids) {
  return table().find(names, count, ids);
}

HRESULT LateBinding::invoke(IDispatch* target, DISPID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                            EXCEPINFO* exception, UINT* bad_argument) {
  if (!parameters) return E_INVALIDARG;
  if (id == DISPID_NEWENUM) flags |= DISPATCH_PROPERTYGET;  // some engines ask for it as a method only

  const Member* const wanted = table().find(id, flags);
  const Member* const member =  // Let where only Set is, or the reverse
      !wanted && (flags & puts) != 0 ? table().find(id, puts) : wanted;
  if (!member) return DISP_E_MEMBERNOTFOUND;

  if (member->plain_result != VT_EMPTY && parameters->cArgs == 0) return read_plain(target, *member, result, exception);

  Arguments arguments(*parameters, *member);
  if (FAILED(arguments.failure())) {
    if (bad_argument) *bad_argument = arguments.bad_argument();
    return arguments.failure();
  }
  if (!wanted && parameters->cArgs > 0 && arguments.data()[0].vt == VT_DISPATCH) flags = static_cast<WORD>(member->way);

  DISPPARAMS prepared = *parameters;
  prepared.rgvarg = arguments.data();
  const HRESULT outcome = table().type_info()->Invoke(target, id, flags, &prepared, result, exception, bad_argument);
  if (FAILED(outcome) || !result) return outcome;
  return make_readable_by_scripts(result);
}

}  // namespace tornby::automation
