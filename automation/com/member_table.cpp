#include "automation/com/member_table.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "automation/com/error_edge.h"
#include "automation/com/lock.h"
#include "automation/com/type_functions.h"
#include "automation/server/module.h"

namespace tornby::automation {
namespace {

/// Marks members in the IDL that take a colour as a plain number.
constexpr GUID takes_color = {0xd1b1a9d8, 0x7d8c, 0x4c5b, {0x8b, 0x0f, 0x2c, 0x51, 0x6e, 0x9a, 0x3d, 0x47}};

/// Types of our own and the system's that only name another one are replaced by that one.
VARTYPE plain_type(ITypeInfo* info, const TYPEDESC& type) {
  if (type.vt != VT_USERDEFINED) return type.vt;
  ComPtr<ITypeInfo> named;
  check(info->GetRefTypeInfo(type.hreftype, named.out()));
  TYPEATTR* attributes = nullptr;
  check(named->GetTypeAttr(&attributes));
  const TYPEDESC alias = attributes->tdescAlias;
  const TYPEKIND kind = attributes->typekind;
  named->ReleaseTypeAttr(attributes);
  if (kind == TKIND_ENUM) return VT_I4;
  return kind == TKIND_ALIAS ? plain_type(named.get(), alias) : static_cast<VARTYPE>(VT_USERDEFINED);
}

VARTYPE array_type(const TYPEDESC& type) {
  return static_cast<VARTYPE>(VT_ARRAY | type.lptdesc->vt);
}

/// The type of a result that is no array and no object; VT_EMPTY for those.
VARTYPE plain_result(ITypeInfo* info, const TYPEDESC& type) {
  const VARTYPE plain = plain_type(info, type);
  return plain == VT_PTR || plain == VT_SAFEARRAY || plain == VT_USERDEFINED || plain == VT_UNKNOWN ||
                 plain == VT_DISPATCH
             ? static_cast<VARTYPE>(VT_EMPTY)
             : plain;
}

/// Colours are the only unsigned numbers of these interfaces.
bool is_color(ITypeInfo* info, const TYPEDESC& type) {
  return plain_type(info, type) == VT_UI4;
}

Parameter describe(ITypeInfo* info, const TYPEDESC& type) {
  using Kind = Parameter::Kind;
  switch (type.vt) {
    case VT_SAFEARRAY:
      return {Kind::array, array_type(type)};
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return {Kind::object, type.vt};
    case VT_PTR:
      break;
    default:
      return is_color(info, type) ? Parameter{Kind::color, VT_UI4} : Parameter{Kind::value, type.vt};
  }
  const TYPEDESC& target = *type.lptdesc;
  switch (target.vt) {
    case VT_SAFEARRAY:
      return {Kind::reference, array_type(target)};
    case VT_USERDEFINED:
    case VT_DISPATCH:
      return {Kind::object, VT_DISPATCH};
    case VT_PTR:
    case VT_UNKNOWN:
    case VT_VARIANT:
      return {};
    default:
      return {Kind::reference, target.vt};
  }
}

wchar_t lower(wchar_t letter) {
  return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter + (L'a' - L'A')) : letter;
}

std::wstring folded(BSTR name) {
  std::wstring result(name, ::SysStringLen(name));
  std::transform(result.begin(), result.end(), result.begin(), lower);
  return result;
}

/// As strcmp, between a name of ours and one of the caller's.
int compare(const std::wstring& known, const wchar_t* name) {
  const wchar_t* letter = known.c_str();
  while (*letter != 0 && *letter == lower(*name)) ++letter, ++name;
  return *letter - lower(*name);
}

/// Whether the IDL marks the member as one that takes a colour.
bool is_marked(ITypeInfo2* info, const FUNCDESC& function) {
  UINT index = 0;
  OwnedVariant mark;
  return SUCCEEDED(info->GetFuncIndexOfMemId(function.memid, function.invkind, &index)) &&
         SUCCEEDED(info->GetFuncCustData(index, takes_color, mark.get())) && mark->vt != VT_EMPTY;
}

}  // namespace

/// A member's name and those of its parameters.
MemberTable::Name MemberTable::names_of(ITypeInfo* info, DISPID id) {
  constexpr UINT most = 16;
  BSTR names[most] = {};
  UINT count = 0;
  check(info->GetNames(id, names, most, &count));
  const struct Owner {
    BSTR* names;
    ~Owner() {
      for (UINT i = 0; i < most; ++i) ::SysFreeString(names[i]);
    }
  } owner{names};
  if (count == 0) throw ComError(TYPE_E_ELEMENTNOTFOUND);
  Name result{id, folded(names[0]), {}};
  for (UINT i = 1; i < count; ++i) result.parameters.push_back(folded(names[i]));
  return result;
}

MemberTable::MemberTable(REFIID interface_id) : interface_id_(interface_id) {
  check(load_type_library()->GetTypeInfoOfGuid(interface_id_, info_.out()));
  // Members are described as the interface itself has them: Wine finds another one's description in the other half.
  constexpr UINT own_interface = static_cast<UINT>(-1);
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> own;
  ComPtr<ITypeInfo2> members;
  check(info_->GetRefTypeOfImplType(own_interface, &reference));
  check(info_->GetRefTypeInfo(reference, own.out()));
  check(own->QueryInterface(IID_ITypeInfo2, members.out_void()));
  describe(members.get());
}

void MemberTable::describe(ITypeInfo2* info) {
  constexpr int inherited = static_cast<int>(7 * sizeof(void*));  // the functions of IDispatch, which may be listed too
  for_each_function(info, [&](const FUNCDESC& function) {
    if (function.oVft < inherited) return;

    Member member;
    member.id = function.memid;
    member.way = function.invkind;
    member.slot = static_cast<std::size_t>(function.oVft) / sizeof(void*);
    for (SHORT i = 0; i < function.cParams; ++i) {
      const ELEMDESC& parameter = function.lprgelemdescParam[i];
      if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
        const TYPEDESC& result = *parameter.tdesc.lptdesc;
        member.returns_color = is_color(info, result);
        if (function.invkind == INVOKE_PROPERTYGET && function.cParams == 1)
          member.plain_result = plain_result(info, result);
      } else if (is_marked(info, function)) {
        member.parameters.push_back({Parameter::Kind::color, parameter.tdesc.vt});
      } else {
        member.parameters.push_back(automation::describe(info, parameter.tdesc));
      }
    }
    members_.push_back(std::move(member));
    const auto named =
        std::find_if(names_.begin(), names_.end(), [&](const Name& name) { return name.id == members_.back().id; });
    if (named == names_.end()) names_.push_back(names_of(info, function.memid));
  });
  std::sort(names_.begin(), names_.end(), [](const Name& a, const Name& b) { return a.member < b.member; });
}

const Member* MemberTable::find(DISPID id, WORD ways) const {
  for (const auto way : {INVOKE_FUNC, INVOKE_PROPERTYGET, INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF})
    if ((ways & way) != 0)
      for (const Member& member : members_)
        if (member.id == id && member.way == way) return &member;
  return nullptr;
}

HRESULT MemberTable::find(LPOLESTR* names, UINT count, DISPID* ids) const {
  if (!names || !ids || count == 0 || std::find(names, names + count, nullptr) != names + count) return E_INVALIDARG;
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  const auto member = std::lower_bound(names_.begin(), names_.end(), names[0], [](const Name& name, LPOLESTR wanted) {
    return compare(name.member, wanted) < 0;
  });
  if (member == names_.end() || compare(member->member, names[0]) != 0) return DISP_E_UNKNOWNNAME;
  ids[0] = member->id;
  HRESULT result = S_OK;
  for (UINT i = 1; i < count; ++i) {
    const auto& known = member->parameters;
    const auto parameter = std::find_if(known.begin(), known.end(),
                                        [&](const std::wstring& name) { return compare(name, names[i]) == 0; });
    if (parameter == known.end())
      result = DISP_E_UNKNOWNNAME;
    else
      ids[i] = static_cast<DISPID>(parameter - known.begin());
  }
  return result;
}

namespace {

/// A plain pointer: when the process ends, COM may be gone before this module's data.
Lock tables_lock;
std::vector<std::shared_ptr<const MemberTable>>* tables = nullptr;

}  // namespace

std::shared_ptr<const MemberTable> member_table(REFIID interface_id) {
  const std::lock_guard lock(tables_lock);
  if (!tables) tables = new std::vector<std::shared_ptr<const MemberTable>>;
  for (const auto& table : *tables)
    if (table->interface_id() == interface_id) return table;
  return tables->emplace_back(std::make_shared<MemberTable>(interface_id));
}

void forget_member_tables() {
  const std::lock_guard lock(tables_lock);
  delete std::exchange(tables, nullptr);
}

}  // namespace tornby::automation
