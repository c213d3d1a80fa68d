// The type library as browsers of types and compilers of other languages read it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "server.h"

namespace tornby {
namespace {

using testing::ComPtr;

std::string narrow(BSTR text) {
  return std::string(text, text + ::SysStringLen(text));
}

/// The name of a type or of one of its members, or its help string.
std::string documentation(ITypeInfo* type, MEMBERID member, bool help = false) {
  BSTR text = nullptr;
  EXPECT_EQ(type->GetDocumentation(member, help ? nullptr : &text, help ? &text : nullptr, nullptr, nullptr), S_OK);
  const std::string copy = narrow(text);
  ::SysFreeString(text);
  return copy;
}

/// Calls `visit` with each type of the DLL's library.
void for_each_type(const std::function<void(ITypeInfo*, const TYPEATTR&)>& visit) {
  ComPtr<ITypeLib> library;
  ASSERT_EQ(::LoadTypeLibEx(testing::dll_path().c_str(), REGKIND_NONE, library.out()), S_OK);
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> type;
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(library->GetTypeInfo(i, type.out()), S_OK);
    ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
    SCOPED_TRACE(documentation(type.get(), MEMBERID_NIL));
    visit(type.get(), *attributes);
    type->ReleaseTypeAttr(attributes);
  }
}

/// Calls `visit` with each function of a type that is not IDispatch's own.
void for_each_member(ITypeInfo* type, const TYPEATTR& attributes, const std::function<void(const FUNCDESC&)>& visit) {
  for (UINT i = 0; i < attributes.cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(type->GetFuncDesc(i, &function), S_OK);
    const bool inherited = (function->memid & 0x7FFC0000) == 0x60000000;
    SCOPED_TRACE(documentation(type, function->memid));
    if (!inherited) visit(*function);
    type->ReleaseFuncDesc(function);
  }
}

/// The words of the interface definition files, without comments and texts.
std::set<std::string> idl_words() {
  std::set<std::string> words;
  for (const auto& file : std::filesystem::directory_iterator(TORNBY_IDL_FOLDER)) {
    const bool is_ours = file.path().filename() != "oaidl.idl" && file.path().filename() != "ocidl.idl";
    if (!is_ours || file.path().extension() != ".idl") continue;
    std::ifstream stream(file.path());
    std::string source((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    source = std::regex_replace(source, std::regex("\"[^\"]*\"|//[^\n]*"), " ");
    const std::regex word("[A-Za-z_][A-Za-z0-9_]*");
    for (std::sregex_iterator next(source.begin(), source.end(), word), end; next != end; ++next)
      words.insert(next->str());
  }
  return words;
}

TEST(TypeLibrary, SpellsEveryNameAsItsDefinitionDoes) {
  // A library keeps one spelling a name, the first that it meets: two in the definition are one too many.
  const auto words = idl_words();
  ASSERT_GT(words.size(), 100u);
  std::map<std::string, std::string> spellings;
  for (const std::string& word : words) {
    std::string lower = word;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return static_cast<char>(::tolower(c)); });
    const auto [known, fresh] = spellings.emplace(lower, word);
    EXPECT_TRUE(fresh) << word << " and " << known->second;
  }

  int names = 0;
  const auto expect_word = [&](const std::string& name) {
    EXPECT_TRUE(words.count(name)) << name;
    ++names;
  };
  for_each_type([&](ITypeInfo* type, const TYPEATTR& attributes) {
    expect_word(documentation(type, MEMBERID_NIL));
    for_each_member(type, attributes, [&](const FUNCDESC& function) {
      BSTR parts[8] = {};
      UINT count = 0;
      ASSERT_EQ(type->GetNames(function.memid, parts, 8, &count), S_OK);
      for (UINT i = 0; i < count; ++i) {
        expect_word(narrow(parts[i]));
        ::SysFreeString(parts[i]);
      }
    });
    for (UINT i = 0; i < attributes.cVars; ++i) {
      VARDESC* value = nullptr;
      ASSERT_EQ(type->GetVarDesc(i, &value), S_OK);
      expect_word(documentation(type, value->memid));
      type->ReleaseVarDesc(value);
    }
  });
  EXPECT_GT(names, 200);
}

TEST(TypeLibrary, SaysThatItsInterfacesAreAllThereIs) {
  for_each_type([](ITypeInfo*, const TYPEATTR& attributes) {
    const bool dual = (attributes.wTypeFlags & TYPEFLAG_FDUAL) != 0;
    EXPECT_TRUE(!dual || (attributes.wTypeFlags & TYPEFLAG_FNONEXTENSIBLE) != 0);
  });
}

TEST(TypeLibrary, EveryInterfaceStandsInTheManifest) {
  const std::wstring dll = testing::dll_path();
  std::ifstream stream(std::filesystem::path(dll).parent_path() / "Tornby.Components.manifest");
  const std::string manifest((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  int interfaces = 0;
  for_each_type([&](ITypeInfo* type, const TYPEATTR& attributes) {
    if (attributes.typekind != TKIND_DISPATCH) return;
    wchar_t id[40] = {};
    ::StringFromGUID2(attributes.guid, id, 40);
    const std::wstring wide(id);
    const std::string entry =
        "name=\"" + documentation(type, MEMBERID_NIL) + "\" iid=\"" + std::string(wide.begin(), wide.end());
    EXPECT_NE(manifest.find(entry), std::string::npos) << entry;
    ++interfaces;
  });
  EXPECT_GT(interfaces, 10);
}

TEST(TypeLibrary, HelpsWithEverything) {
  const std::wstring dll = testing::dll_path();
  const auto page_path = std::filesystem::path(dll).parent_path() / "tornby.html";
  std::ifstream stream(page_path);
  const std::string page((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  ComPtr<ITypeLib> library;
  testing::Bstr named;
  ASSERT_EQ(::LoadTypeLibEx(dll.c_str(), REGKIND_NONE, library.out()), S_OK);
  EXPECT_EQ(library->GetDocumentation(MEMBERID_NIL, nullptr, nullptr, nullptr, named.address()), S_OK);
  EXPECT_EQ(std::filesystem::path(static_cast<BSTR>(named)).filename(), page_path.filename());
  std::map<DWORD, std::string> owners;
  const auto expect_help = [&](ITypeInfo* type, MEMBERID member) {
    DWORD context = 0;
    EXPECT_EQ(type->GetDocumentation(member, nullptr, nullptr, &context, nullptr), S_OK);
    EXPECT_NE(documentation(type, member, true), "");
    EXPECT_NE(page.find(" id=\"" + std::to_string(context) + "\""), std::string::npos) << context;
    const std::string name = documentation(type, MEMBERID_NIL) + "." + documentation(type, member);
    EXPECT_EQ(owners.emplace(context, name).first->second, name) << context;
  };
  for_each_type([&](ITypeInfo* type, const TYPEATTR& attributes) {
    if (attributes.typekind == TKIND_ALIAS) return;
    expect_help(type, MEMBERID_NIL);
    for_each_member(type, attributes, [&](const FUNCDESC& function) { expect_help(type, function.memid); });
  });
  EXPECT_GT(owners.size(), 200u);

  // Errors lead there too.
  const testing::Server server;
  ComPtr<IErrorInfo> error;
  testing::Bstr file;
  DWORD context = 0;
  VARIANT value = {};
  EXPECT_EQ(static_cast<ULONG>(server.create<IclsCRC>(CLSID_clsCRC)->AddString(testing::Bstr(L""), &value)),
            0x800A0009);
  ASSERT_EQ(::GetErrorInfo(0, error.out()), S_OK);
  EXPECT_EQ(error->GetHelpFile(file.address()), S_OK);
  EXPECT_EQ(error->GetHelpContext(&context), S_OK);
  EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::path(static_cast<BSTR>(file)), page_path));
  EXPECT_EQ(owners[context], "IclsCRC.IclsCRC");
}

/// Whether automation languages have the type; names of other types are followed.
bool is_automation_type(ITypeInfo* type, const TYPEDESC& description) {
  switch (description.vt) {
    case VT_I2:
    case VT_I4:
    case VT_BSTR:
    case VT_BOOL:
    case VT_VARIANT:
    case VT_DISPATCH:
    case VT_UNKNOWN:
    case VT_VOID:
    case VT_HRESULT:
    case VT_UI1:  // as an array's element only, see below
      return true;
    case VT_PTR:
    case VT_SAFEARRAY:
      return (description.vt == VT_SAFEARRAY || description.lptdesc->vt != VT_UI1) &&
             is_automation_type(type, *description.lptdesc);
    case VT_USERDEFINED:
      break;
    default:
      return false;
  }
  ComPtr<ITypeInfo> named;
  TYPEATTR* attributes = nullptr;
  EXPECT_EQ(type->GetRefTypeInfo(description.hreftype, named.out()), S_OK);
  EXPECT_EQ(named->GetTypeAttr(&attributes), S_OK);
  const TYPEKIND kind = attributes->typekind;
  named->ReleaseTypeAttr(attributes);
  // An alias is known to those languages when the system's library, which they all have, defines it.
  ComPtr<ITypeLib> library;
  UINT index = 0;
  TLIBATTR* owner = nullptr;
  EXPECT_EQ(named->GetContainingTypeLib(library.out(), &index), S_OK);
  EXPECT_EQ(library->GetLibAttr(&owner), S_OK);
  const GUID standard = {0x00020430, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  const bool is_standard = owner->guid == standard;
  library->ReleaseTLibAttr(owner);
  return kind == TKIND_INTERFACE || kind == TKIND_DISPATCH || kind == TKIND_ENUM ||
         (kind == TKIND_ALIAS && is_standard);
}

TEST(TypeLibrary, MembersUseTheTypesOfAutomationLanguages) {
  int colors = 0;
  for_each_type([&](ITypeInfo* type, const TYPEATTR& attributes) {
    for_each_member(type, attributes, [&](const FUNCDESC& function) {
      EXPECT_NE(function.elemdescFunc.tdesc.vt, VT_UI1);
      EXPECT_TRUE(is_automation_type(type, function.elemdescFunc.tdesc));
      colors += function.elemdescFunc.tdesc.vt == VT_USERDEFINED;
      for (SHORT i = 0; i < function.cParams; ++i) {
        const TYPEDESC& parameter = function.lprgelemdescParam[i].tdesc;
        EXPECT_NE(parameter.vt, VT_UI1);
        EXPECT_TRUE(is_automation_type(type, parameter)) << "parameter " << i << " of type " << parameter.vt;
      }
    });
  });
  EXPECT_EQ(colors, 7) << "BackColor three times, ForeColor, and those of the link, as the system's colour type";
}

}  // namespace
}  // namespace tornby
