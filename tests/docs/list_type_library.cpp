// Prints what the type library in a DLL holds, a line for each member of an interface ("interface name help string")
// and each value of an enumeration ("enumeration name number"). Usage: list_type_library dll

#include <cstdio>
#include <set>
#include <string>

#include "automation/com/com.h"

namespace {

using tornby::automation::ComPtr;

std::string take(BSTR text) {
  std::string result;
  for (const wchar_t* unit = text; unit && *unit; ++unit) result += static_cast<char>(*unit);
  ::SysFreeString(text);
  return result;
}

std::string name_of(ITypeInfo& type, MEMBERID member, std::string* help = nullptr) {
  BSTR name = nullptr, said = nullptr;
  type.GetDocumentation(member, &name, help ? &said : nullptr, nullptr, nullptr);
  if (help) *help = take(said);
  return take(name);
}

void list(ITypeInfo& type, std::set<std::string>& lines) {
  TYPEATTR* about = nullptr;
  if (FAILED(type.GetTypeAttr(&about))) return;
  const std::string owner = name_of(type, MEMBERID_NIL);
  std::string help;
  for (UINT i = 0; i < about->cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(type.GetFuncDesc(i, &function))) continue;
    // What every automation interface begins with has no help string here.
    const std::string name = name_of(type, function->memid, &help);
    if (!help.empty() || function->memid < 0x60000000) lines.insert(owner + " " + name + " " + help);
    type.ReleaseFuncDesc(function);
  }
  for (UINT i = 0; about->typekind == TKIND_ENUM && i < about->cVars; ++i) {
    VARDESC* value = nullptr;
    if (FAILED(type.GetVarDesc(i, &value))) continue;
    lines.insert(owner + " " + name_of(type, value->memid) + " " + std::to_string(value->lpvarValue->lVal));
    type.ReleaseVarDesc(value);
  }
  type.ReleaseTypeAttr(about);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  ComPtr<ITypeLib> library;
  if (argc != 2 || FAILED(::LoadTypeLibEx(argv[1], REGKIND_NONE, library.out()))) return 1;
  std::set<std::string> lines;
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> type;
    if (SUCCEEDED(library->GetTypeInfo(i, type.out()))) list(*type.get(), lines);
  }
  for (const std::string& line : lines) std::puts(line.c_str());
  return 0;
}
