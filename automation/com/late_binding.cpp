#include "automation/com/late_binding.h"

#include <deque>
#include <utility>
#include <vector>

#include "automation/com/arrays.h"
#include "automation/com/convert.h"
#include "automation/com/error_edge.h"
#include "automation/server/module.h"

namespace tornby::automation {
namespace {

/// The description of one member, which goes back to the type information that gave it.
class Member {
 public:
  /// The member with that id, called in one of these ways; false afterwards when there is none.
  Member(ITypeInfo2* info, DISPID id, WORD ways) : info_(info) {
    for (const auto way : {INVOKE_FUNC, INVOKE_PROPERTYGET, INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF}) {
      UINT index = 0;
      if ((ways & way) == 0 || FAILED(info->GetFuncIndexOfMemId(id, way, &index))) continue;
      // Wine counts the interface's own members here, but the inherited ones too, which come first, when it describes.
      while (SUCCEEDED(info->GetFuncDesc(index++, &description_))) {
        if (description_->memid == id && description_->invkind == way) return;
        info->ReleaseFuncDesc(std::exchange(description_, nullptr));
      }
    }
  }
  ~Member() {
    if (description_) info_->ReleaseFuncDesc(description_);
  }
  Member(const Member&) = delete;
  Member& operator=(const Member&) = delete;

  explicit operator bool() const { return description_ != nullptr; }
  const FUNCDESC& operator*() const { return *description_; }

 private:
  ITypeInfo2* info_;
  FUNCDESC* description_ = nullptr;
};

VARTYPE array_type(const TYPEDESC& type) {
  return static_cast<VARTYPE>(VT_ARRAY | type.lptdesc->vt);
}

/// The variant type that a by-reference parameter points to; VT_EMPTY for other parameters, objects among them.
VARTYPE referenced_type(const TYPEDESC& type) {
  if (type.vt != VT_PTR) return VT_EMPTY;
  switch (type.lptdesc->vt) {
    case VT_SAFEARRAY:
      return array_type(*type.lptdesc);
    case VT_PTR:
    case VT_USERDEFINED:
    case VT_DISPATCH:
    case VT_UNKNOWN:
    case VT_VARIANT:
      return VT_EMPTY;
    default:
      return type.lptdesc->vt;
  }
}

bool takes_object(const TYPEDESC& type) {
  return type.vt == VT_DISPATCH || type.vt == VT_UNKNOWN ||
         (type.vt == VT_PTR && (type.lptdesc->vt == VT_USERDEFINED || type.lptdesc->vt == VT_DISPATCH));
}

bool is_script_variable(const VARIANT& argument) {
  return argument.vt == (VT_BYREF | VT_VARIANT);
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
  Arguments(const DISPPARAMS& parameters, const FUNCDESC& member)
      : values_(parameters.rgvarg, parameters.rgvarg + parameters.cArgs) {
    for (UINT i = 0; i < parameters.cArgs; ++i) {
      const int position = position_of(parameters, i, member);
      if (position < 0 || position >= member.cParams) continue;
      const HRESULT result = prepare(values_[i], member.lprgelemdescParam[position].tdesc);
      if (SUCCEEDED(result)) continue;
      failure_ = result;
      bad_argument_ = i;
      return;
    }
  }

  HRESULT failure() const { return failure_; }
  UINT bad_argument() const { return bad_argument_; }
  VARIANT* data() { return values_.data(); }

 private:
  /// Arguments come last first, the named ones in front.
  static int position_of(const DISPPARAMS& parameters, UINT index, const FUNCDESC& member) {
    if (index >= parameters.cNamedArgs) return static_cast<int>(parameters.cArgs - 1 - index);
    const DISPID name = parameters.rgdispidNamedArgs[index];
    return name == DISPID_PROPERTYPUT ? member.cParams - 1 : name;
  }

  HRESULT prepare(VARIANT& argument, const TYPEDESC& type) {
    if (const VARTYPE wanted = referenced_type(type); wanted != VT_EMPTY) return pass_reference(argument, wanted);
    if (type.vt == VT_SAFEARRAY) return pass_array(argument, array_type(type));
    if (takes_object(type)) pass_null_object(argument);
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

  static void pass_null_object(VARIANT& argument) {
    const VARIANT& value = is_script_variable(argument) ? *argument.pvarVal : argument;
    if (value.vt != VT_NULL) return;
    ::VariantInit(&argument);
    argument.vt = VT_DISPATCH;
    argument.pdispVal = nullptr;
  }

  std::vector<VARIANT> values_;      // shallow: the caller or copies_ owns what they refer to
  std::deque<OwnedVariant> copies_;  // does not move them
  HRESULT failure_ = S_OK;
  UINT bad_argument_ = 0;
};

/// Scripts can look into arrays of variants only.
HRESULT make_readable_by_scripts(VARIANT* result) {
  if (!result || result->vt != (VT_ARRAY | VT_BSTR)) return S_OK;
  OwnedVariant strings(*result);
  ::VariantInit(result);
  return convert_array(strings->parray, VT_VARIANT, result);
}

constexpr WORD puts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

}  // namespace

ComPtr<ITypeInfo2> LateBinding::load() {
  if (!info_) {
    ComPtr<ITypeInfo> info;
    check(load_type_library()->GetTypeInfoOfGuid(interface_id_, info.out()));
    check(info->QueryInterface(IID_ITypeInfo2, info_.out_void()));
  }
  return info_;
}

ComPtr<ITypeInfo2> LateBinding::load_members() {
  if (!members_) {
    constexpr UINT own_interface = static_cast<UINT>(-1);
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> info;
    check(load()->GetRefTypeOfImplType(own_interface, &reference));
    check(load()->GetRefTypeInfo(reference, info.out()));
    check(info->QueryInterface(IID_ITypeInfo2, members_.out_void()));
  }
  return members_;
}

ComPtr<ITypeInfo> LateBinding::type_info() {
  return ComPtr<ITypeInfo>(load().get());
}

HRESULT LateBinding::find(LPOLESTR* names, UINT count, DISPID* ids) {
  return ::DispGetIDsOfNames(load().get(), names, count, ids);
}

HRESULT LateBinding::invoke(IDispatch* target, DISPID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                            EXCEPINFO* exception, UINT* bad_argument) {
  if (!parameters) return E_INVALIDARG;
  const ComPtr<ITypeInfo2> info = load();
  if (id == DISPID_NEWENUM) flags |= DISPATCH_PROPERTYGET;  // some engines ask for it as a method only

  const ComPtr<ITypeInfo2> members = load_members();
  const Member wanted(members.get(), id, flags);
  const Member other(members.get(), id,
                     !wanted && (flags & puts) != 0 ? puts : 0);  // Let where only Set is, or the reverse
  if (!wanted && !other) return DISP_E_MEMBERNOTFOUND;
  const FUNCDESC& member = wanted ? *wanted : *other;

  Arguments arguments(*parameters, member);
  if (FAILED(arguments.failure())) {
    if (bad_argument) *bad_argument = arguments.bad_argument();
    return arguments.failure();
  }
  if (!wanted && parameters->cArgs > 0 && arguments.data()[0].vt == VT_DISPATCH)
    flags = static_cast<WORD>(member.invkind);

  DISPPARAMS prepared = *parameters;
  prepared.rgvarg = arguments.data();
  const HRESULT outcome = info->Invoke(target, id, flags, &prepared, result, exception, bad_argument);
  return SUCCEEDED(outcome) ? make_readable_by_scripts(result) : outcome;
}

}  // namespace tornby::automation
