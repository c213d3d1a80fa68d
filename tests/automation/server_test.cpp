// The DLL as a whole: what it exports, registers, describes and keeps alive.
#include <gtest/gtest.h>

#include <string>

#include <comcat.h>

#include "server.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::ComPtr;
using testing::Server;

/// The classes' names and ids, from the same table that the DLL is built from.
#define TORNBY_CLASS(name, clsid, description) {L"" #name, L"" clsid, &CLSID_##name},
const struct {
  const wchar_t* name;
  const wchar_t* clsid;
  const CLSID* id;
} classes[] = {
#include "automation/server/classes.inc"
};
#undef TORNBY_CLASS

std::wstring read_key(HKEY root, const std::wstring& path, const wchar_t* value = nullptr) {
  wchar_t text[MAX_PATH] = {};
  DWORD size = sizeof text;
  if (::RegGetValueW(root, path.c_str(), value, RRF_RT_REG_SZ, nullptr, text, &size) != ERROR_SUCCESS) return L"(none)";
  return text;
}

std::wstring all_verbs(IEnumOLEVERB* verbs) {
  std::wstring text;
  for (OLEVERB verb = {}; verbs->Next(1, &verb, nullptr) == S_OK; ::CoTaskMemFree(verb.lpszVerbName))
    text += std::to_wstring(verb.lVerb) + verb.lpszVerbName + std::to_wstring(verb.grfAttribs) + L' ';
  return text;
}

/// The menu of an object that sleeps in a document is that of the same one awake.
void expect_agreement_on_verbs(REFCLSID id, IDispatch* object) {
  ComPtr<IOleObject> control;
  ComPtr<IEnumOLEVERB> registered, own;
  if (object->QueryInterface(IID_IOleObject, control.out_void()) != S_OK) return;
  ASSERT_EQ(::OleRegEnumVerbs(id, registered.out()), S_OK);
  ASSERT_EQ(control->EnumVerbs(own.out()), S_OK);
  EXPECT_EQ(all_verbs(registered.get()), L"0&Edit2 1&Properties...3 ");
  EXPECT_EQ(all_verbs(own.get()), L"0&Edit2 1&Properties...3 ");
}

/// What the registry or the manifest says of a class, null for one that is no control, and what its object says.
void expect_agreement_on_status(REFCLSID id, IDispatch* object) {
  ComPtr<IOleObject> control;
  DWORD registered = 0;
  EXPECT_EQ(::OleRegGetMiscStatus(id, DVASPECT_CONTENT, &registered), S_OK);
  if (object->QueryInterface(IID_IOleObject, control.out_void()) != S_OK) {
    EXPECT_EQ(registered, 0u);
    return;
  }
  DWORD own = 0;
  EXPECT_EQ(control->GetMiscStatus(DVASPECT_CONTENT, &own), S_OK);
  EXPECT_NE(own & OLEMISC_ACTIVATEWHENVISIBLE, 0u);
  EXPECT_EQ(registered, own);
}

/// Of a registered "C:\\folder\\tornby.dll, 101".
bool toolbox_picture_exists(const std::wstring& value) {
  const std::size_t comma = value.rfind(L',');
  if (comma == std::wstring::npos) return false;
  const HMODULE library = ::LoadLibraryExW(value.substr(0, comma).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  const HBITMAP bitmap = ::LoadBitmapW(library, MAKEINTRESOURCEW(std::stoi(value.substr(comma + 1))));
  BITMAP description = {};
  ::GetObjectW(bitmap, sizeof description, &description);
  ::DeleteObject(bitmap);
  ::FreeLibrary(library);
  return description.bmWidth == 16 && description.bmHeight == 15;
}

/// Whether a class is in one of the lists from which programs let their users choose.
bool is_listed(REFCLSID wanted, REFGUID category) {
  ComPtr<ICatInformation> lists;
  EXPECT_EQ(::CoCreateInstance(CLSID_StdComponentCategoriesMgr, nullptr, CLSCTX_INPROC_SERVER, IID_ICatInformation,
                               lists.out_void()),
            S_OK);
  ComPtr<IEnumGUID> found;
  GUID category_id = category;
  EXPECT_EQ(lists->EnumClassesOfCategories(1, &category_id, 0, nullptr, found.out()), S_OK);
  for (CLSID id{}; found->Next(1, &id, nullptr) == S_OK;)
    if (id == wanted) return true;
  return false;
}

HRESULT call_export(const Server& server, const char* name) {
  return reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(server.entry(name)))();
}

HRESULT install(const Server& server, BOOL in, const wchar_t* command) {
  return reinterpret_cast<HRESULT(WINAPI*)(BOOL, LPCWSTR)>(reinterpret_cast<void*>(server.entry("DllInstall")))(
      in, command);
}

TEST(Server, TableAndTypeLibraryAgree) {
  for (const auto& entry : classes) {
    CLSID id{};
    ASSERT_EQ(::CLSIDFromString(entry.clsid, &id), S_OK);
    EXPECT_TRUE(id == *entry.id) << std::wstring(entry.name).size();
  }
}

TEST(Server, RegistersForTheMachineAndRemovesItAll) {
  const Server server;
  ASSERT_EQ(call_export(server, "DllRegisterServer"), S_OK);
  for (const auto& entry : classes) {
    const std::wstring name = std::wstring(L"Tornby.") + entry.name;
    const std::wstring key = std::wstring(L"Software\\Classes\\CLSID\\") + entry.clsid;
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, key + L"\\InprocServer32"), testing::dll_path());
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, key + L"\\VersionIndependentProgID"), name);
    CLSID id{};
    EXPECT_EQ(::CLSIDFromProgID(name.c_str(), &id), S_OK);
    EXPECT_TRUE(id == *entry.id);
    EXPECT_EQ(::CLSIDFromProgID((name + L".1").c_str(), &id), S_OK);
    ComPtr<IDispatch> object;
    ASSERT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.out_void()), S_OK);
    expect_agreement_on_status(id, object.get());
    expect_agreement_on_verbs(id, object.get());
    const bool is_control = read_key(HKEY_LOCAL_MACHINE, key + L"\\MiscStatus") == L"0";
    EXPECT_EQ(toolbox_picture_exists(read_key(HKEY_LOCAL_MACHINE, key + L"\\ToolboxBitmap32")), is_control);
    for (const GUID& list : {CATID_Control, CATID_Insertable}) EXPECT_EQ(is_listed(id, list), is_control);
    HKEY mark = nullptr;
    const std::wstring insertable = std::wstring(L"Software\\Classes\\") + name + L".1\\Insertable";
    EXPECT_EQ(::RegOpenKeyW(HKEY_LOCAL_MACHINE, insertable.c_str(), &mark) == ERROR_SUCCESS, is_control);
    ::RegCloseKey(mark);
  }
  const std::wstring page_key = L"Software\\Classes\\CLSID\\{3D0B6C1E-5E0B-4E37-9A3C-0D6F4B2E9158}";
  EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, page_key + L"\\InprocServer32"), testing::dll_path());
  ComPtr<ITypeLib> library;
  EXPECT_EQ(::LoadRegTypeLib(LIBID_Tornby, 1, 0, 0, library.out()), S_OK);

  ASSERT_EQ(call_export(server, "DllUnregisterServer"), S_OK);
  for (const auto& entry : classes) {
    CLSID id{};
    for (const wchar_t* version : {L"", L".1"})
      EXPECT_NE(::CLSIDFromProgID((std::wstring(L"Tornby.") + entry.name + version).c_str(), &id), S_OK);
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, std::wstring(L"Software\\Classes\\CLSID\\") + entry.clsid), L"(none)");
  }
  EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, page_key), L"(none)");
  EXPECT_NE(::LoadRegTypeLib(LIBID_Tornby, 1, 0, 0, library.out()), S_OK);
  EXPECT_EQ(call_export(server, "DllUnregisterServer"), S_OK) << "removing twice is no failure";
}

#ifdef _WIN64
/// Runs a program of the 32-bit or of the 64-bit system folder and returns its status.
DWORD run(const wchar_t* folder, const std::wstring& arguments) {
  std::wstring command = std::wstring(L"C:\\windows\\") + folder + L"\\" + arguments;
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
    return MAXDWORD;
  DWORD status = MAXDWORD;
  ::WaitForSingleObject(process.hProcess, 60'000);
  ::GetExitCodeProcess(process.hProcess, &status);
  ::CloseHandle(process.hProcess);
  ::CloseHandle(process.hThread);
  return status;
}

TEST(Server, StandsBesideThe32BitOneAndLeavesItAlone) {
  std::wstring other = testing::dll_path();
  const std::size_t kind = other.find(L"windows-x64");
  if (kind != std::wstring::npos) other.replace(kind, 11, L"windows-x86");
  if (kind == std::wstring::npos || ::GetFileAttributesW(other.c_str()) == INVALID_FILE_ATTRIBUTES)
    GTEST_SKIP() << "the 32-bit DLL is not built";
  const testing::TemporaryFolder folder;
  folder.write("check.vbs",
               "sum = CreateObject(\"Tornby.clsCRC\").CalculateString(\"123456789\")\r\n"
               "If sum = -873187034 Then WScript.Quit 64\r\n"
               "If sum = 771566984 Or sum = -771566985 Then WScript.Quit 32\r\nWScript.Quit 1\r\n");
  const std::wstring check = L"cscript.exe //nologo " + (folder.path() / "check.vbs").wstring();
  const std::wstring own = std::wstring(L"Software\\Classes\\CLSID\\") + classes[0].clsid + L"\\InprocServer32";
  const std::wstring others =
      std::wstring(L"Software\\Classes\\Wow6432Node\\CLSID\\") + classes[0].clsid + L"\\InprocServer32";
  const Server server;
  for (const bool other_first : {true, false}) {
    if (other_first) {
      ASSERT_EQ(run(L"syswow64", L"regsvr32.exe /s " + other), 0u);
    }
    ASSERT_EQ(call_export(server, "DllRegisterServer"), S_OK);
    if (!other_first) {
      ASSERT_EQ(run(L"syswow64", L"regsvr32.exe /s " + other), 0u);
    }
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, own), testing::dll_path());
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, others), other);
    EXPECT_EQ(run(L"system32", check), 64u);
    EXPECT_EQ(run(L"syswow64", check), 32u) << "of a text alone the 32-bit class gives another sum there";

    ASSERT_EQ(call_export(server, "DllUnregisterServer"), S_OK);
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, others), other);
    EXPECT_EQ(run(L"syswow64", check), 32u) << "without the 64-bit one";
    ASSERT_EQ(run(L"syswow64", L"regsvr32.exe /s /u " + other), 0u);
    EXPECT_EQ(read_key(HKEY_LOCAL_MACHINE, others), L"(none)");
  }
}
#endif

TEST(Server, RegistersForTheUserAndRemovesItAll) {
  const Server server;
  EXPECT_EQ(install(server, TRUE, L"somebody"), E_INVALIDARG);
  ASSERT_EQ(install(server, TRUE, L"user"), S_OK);
  for (const auto& entry : classes) {
    const std::wstring key = std::wstring(L"Software\\Classes\\CLSID\\") + entry.clsid;
    EXPECT_EQ(read_key(HKEY_CURRENT_USER, key + L"\\InprocServer32"), testing::dll_path());
    EXPECT_EQ(read_key(HKEY_CURRENT_USER, std::wstring(L"Software\\Classes\\Tornby.") + entry.name + L"\\CLSID"),
              entry.clsid);
  }
  ASSERT_EQ(install(server, FALSE, L"user"), S_OK);
  for (const auto& entry : classes) {
    EXPECT_EQ(read_key(HKEY_CURRENT_USER, std::wstring(L"Software\\Classes\\CLSID\\") + entry.clsid + L"\\ProgID"),
              L"(none)");
    EXPECT_EQ(read_key(HKEY_CURRENT_USER, std::wstring(L"Software\\Classes\\Tornby.") + entry.name + L"\\CLSID"),
              L"(none)");
  }
}

TEST(Server, WorksThroughItsManifestWithoutTheRegistry) {
  ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
  {
    const testing::ManifestActivation manifest;
    for (const auto& entry : classes) {
      CLSID id{};
      EXPECT_EQ(::CLSIDFromProgID((std::wstring(L"Tornby.") + entry.name).c_str(), &id), S_OK);
      ComPtr<IDispatch> object;
      ASSERT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.out_void()), S_OK);
      expect_agreement_on_status(id, object.get());
    }
  }
  ::CoUninitialize();
}

TEST(Server, ObjectsAnswerTheUsualQuestions) {
  const Server server;
  for (const auto& entry : classes) {
    const auto object = server.create<IDispatch>(*entry.id);
    ComPtr<IUnknown> identity;
    ComPtr<IUnknown> again;
    ComPtr<ISupportErrorInfo> errors;
    ASSERT_EQ(object->QueryInterface(IID_IUnknown, identity.out_void()), S_OK);
    ASSERT_EQ(object->QueryInterface(IID_ISupportErrorInfo, errors.out_void()), S_OK);
    ASSERT_EQ(errors->QueryInterface(IID_IUnknown, again.out_void()), S_OK);
    EXPECT_EQ(identity.get(), again.get());
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    void* nothing = &again;
    EXPECT_EQ(object->QueryInterface(IID_IStorage, &nothing), E_NOINTERFACE);
    EXPECT_EQ(nothing, nullptr);
    ComPtr<IProvideClassInfo> provider;
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(object->QueryInterface(IID_IProvideClassInfo, provider.out_void()), S_OK);
    ASSERT_EQ(provider->GetClassInfo(info.out()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == *entry.id);
    info->ReleaseTypeAttr(attributes);
  }
}

TEST(Server, StaysLoadedJustAsLongAsSomethingLives) {
  const Server server;
  EXPECT_TRUE(server.is_idle());
  {
    const auto factory = server.factory(CLSID_clsCRC);
    EXPECT_FALSE(server.is_idle());
    ComPtr<IDispatch> object;
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IDispatch, object.out_void()), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStorage, object.out_void()), E_NOINTERFACE);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, nullptr), E_POINTER);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, object.out_void()), S_OK);
  }
  EXPECT_TRUE(server.is_idle());
  server.factory(CLSID_clsCRC)->LockServer(TRUE);
  EXPECT_FALSE(server.is_idle());
  server.factory(CLSID_clsCRC)->LockServer(FALSE);
  EXPECT_TRUE(server.is_idle());
}

TEST(Server, RefusesClassesThatItDoesNotHave) {
  const Server server;
  using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
  const auto get = reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(server.entry("DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(get(IID_IDispatch, IID_IClassFactory, factory.out_void()), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(get(CLSID_clsCRC, IID_IDispatch, factory.out_void()), E_NOINTERFACE);
  EXPECT_EQ(get(CLSID_clsCRC, IID_IClassFactory, nullptr), E_POINTER);
}

TEST(Server, CarriesItsVersion) {
  const std::wstring dll = testing::dll_path();
  DWORD ignored = 0;
  std::string block(::GetFileVersionInfoSizeW(dll.c_str(), &ignored), '\0');
  ASSERT_FALSE(block.empty());
  ASSERT_TRUE(::GetFileVersionInfoW(dll.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
  void* text = nullptr;
  UINT length = 0;
  EXPECT_TRUE(::VerQueryValueW(block.data(), L"\\StringFileInfo\\040904E4\\OLESelfRegister", &text, &length));
  ASSERT_TRUE(::VerQueryValueW(block.data(), L"\\StringFileInfo\\040904E4\\ProductName", &text, &length));
  EXPECT_STREQ(static_cast<wchar_t*>(text), L"Tornby");
}

}  // namespace
}  // namespace tornby
