#include "automation/controls/pages/page_property.h"

#include <algorithm>
#include <optional>

#include "automation/com/type_functions.h"

namespace tornby::automation {
namespace {

/// What GetPredefinedStrings hands out.
class NamedValues {
 public:
  NamedValues(IPerPropertyBrowsing* browsing, DISPID property) {
    if (FAILED(browsing->GetPredefinedStrings(property, &names_, &cookies_))) names_ = {}, cookies_ = {};
  }
  ~NamedValues() {
    for (ULONG i = 0; i < names_.cElems; ++i) ::CoTaskMemFree(names_.pElems[i]);
    ::CoTaskMemFree(names_.pElems);
    ::CoTaskMemFree(cookies_.pElems);
  }
  NamedValues(const NamedValues&) = delete;
  NamedValues& operator=(const NamedValues&) = delete;

  ULONG size() const { return std::min(names_.cElems, cookies_.cElems); }
  LPOLESTR name(ULONG index) const { return names_.pElems[index]; }
  DWORD cookie(ULONG index) const { return cookies_.pElems[index]; }

 private:
  CALPOLESTR names_ = {};
  CADWORD cookies_ = {};
};

std::vector<PageProperty::Choice> choices_of(IPerPropertyBrowsing* browsing, DISPID property) {
  std::vector<PageProperty::Choice> choices;
  if (!browsing) return choices;
  const NamedValues named(browsing, property);
  for (ULONG i = 0; i < named.size(); ++i) {
    OwnedVariant value;
    check(browsing->GetPredefinedValue(property, named.cookie(i), value.get()));
    check(::VariantChangeType(value.get(), value.get(), 0, VT_I4));
    choices.push_back({value->lVal, named.name(i)});
  }
  return choices;
}

void name_and_explain(PageProperty& property, ITypeInfo* info) {
  OwnedVariant name, help;
  name->vt = help->vt = VT_BSTR;
  check(info->GetDocumentation(property.id, &name->bstrVal, &help->bstrVal, &property.help_context, nullptr));
  property.name.assign(name->bstrVal, ::SysStringLen(name->bstrVal));
  if (help->bstrVal) property.help.assign(help->bstrVal, ::SysStringLen(help->bstrVal));
}

bool is_shown(const FUNCDESC& function) {
  constexpr WORD kept_back = FUNCFLAG_FHIDDEN | FUNCFLAG_FRESTRICTED | FUNCFLAG_FNONBROWSABLE;
  return function.invkind == INVOKE_PROPERTYGET && (function.wFuncFlags & kept_back) == 0;
}

/// What a property is read as: it is described as the function's result, or as an argument for it. VT_EMPTY for one
/// that takes arguments of the caller's.
VARTYPE type_of(const FUNCDESC& function) {
  if (function.cParams == 0) return function.elemdescFunc.tdesc.vt;
  const ELEMDESC& first = function.lprgelemdescParam[0];
  const bool is_result = function.cParams == 1 && (first.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0;
  return is_result ? first.tdesc.lptdesc->vt : static_cast<VARTYPE>(VT_EMPTY);
}

std::optional<PageProperty::Kind> kind_of(VARTYPE type) {
  switch (type) {
    case VT_BSTR:
      return PageProperty::Kind::text;
    case VT_I2:
    case VT_I4:
      return PageProperty::Kind::number;
    case VT_BOOL:
      return PageProperty::Kind::flag;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::vector<PageProperty> page_properties(ITypeInfo* info, IPerPropertyBrowsing* browsing) {
  std::vector<MEMBERID> written;
  for_each_function(info, [&](const FUNCDESC& function) {
    if (function.invkind == INVOKE_PROPERTYPUT) written.push_back(function.memid);
  });
  std::vector<PageProperty> properties;
  for_each_function(info, [&](const FUNCDESC& function) {
    const VARTYPE type = type_of(function);
    const auto kind = kind_of(type);
    if (!kind || !is_shown(function)) return;
    if (std::find(written.begin(), written.end(), function.memid) == written.end()) return;
    PageProperty found{function.memid, {}, *kind, type, {}, {}, 0};
    name_and_explain(found, info);
    if (found.kind == PageProperty::Kind::number) found.choices = choices_of(browsing, found.id);
    if (!found.choices.empty()) found.kind = PageProperty::Kind::choice;
    properties.push_back(std::move(found));
  });
  return properties;
}

}  // namespace tornby::automation
