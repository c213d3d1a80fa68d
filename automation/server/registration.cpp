#include "automation/server/registration.h"

#include <string>

#include "automation/com/error_edge.h"
#include "automation/controls/verbs.h"
#include "automation/server/class_table.h"
#include "automation/server/module.h"
#include "automation/server/registry_key.h"

// In the import library, but in no header.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* help_folder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND system);

namespace tornby::automation {
namespace {

HKEY root_of(Scope scope) {
  return scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

const std::wstring classes_path = L"Software\\Classes\\";

std::wstring prog_id(const ClassEntry& entry) {
  return std::wstring(L"Tornby.") + entry.name;
}
std::wstring versioned_prog_id(const ClassEntry& entry) {
  return prog_id(entry) + L".1";
}
std::wstring clsid_path(const ClassEntry& entry) {
  return classes_path + L"CLSID\\" + entry.clsid;
}

/// A control, and one that documents embed. The second is what "Insert Object" looks for, in classes and in their
/// names.
constexpr const wchar_t* control_category = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
constexpr const wchar_t* insertable_category = L"{40FC6ED3-2438-11CF-A3DB-080036F12502}";
constexpr const wchar_t* insertable = L"Insertable";

/// The type library's identity, as it says itself.
class LibraryAttributes {
 public:
  LibraryAttributes() : library_(load_type_library()) { check(library_->GetLibAttr(&attributes_)); }
  ~LibraryAttributes() { library_->ReleaseTLibAttr(attributes_); }
  LibraryAttributes(const LibraryAttributes&) = delete;
  LibraryAttributes& operator=(const LibraryAttributes&) = delete;

  ITypeLib* library() const { return library_.get(); }
  const TLIBATTR* operator->() const { return attributes_; }

  std::wstring id() const {
    wchar_t text[40] = {};
    ::StringFromGUID2(attributes_->guid, text, 40);
    return text;
  }
  std::wstring version() const {
    return std::to_wstring(attributes_->wMajorVerNum) + L"." + std::to_wstring(attributes_->wMinorVerNum);
  }

 private:
  ComPtr<ITypeLib> library_;
  TLIBATTR* attributes_ = nullptr;
};

RegistryKey register_name(HKEY root, const std::wstring& name, const ClassEntry& entry) {
  RegistryKey key = RegistryKey::create(root, classes_path + name);
  key.set(L"", entry.description);
  key.add(L"CLSID", entry.clsid);
  if (entry.is_control()) key.add(insertable);
  return key;
}

void register_class(HKEY root, const ClassEntry& entry, const std::wstring& dll, const LibraryAttributes& library) {
  const RegistryKey key = RegistryKey::create(root, clsid_path(entry));
  key.set(L"", entry.description);
  key.add(L"InprocServer32", dll).set(L"ThreadingModel", L"Apartment");
  if (entry.is_page) return;
  key.add(L"ProgID", versioned_prog_id(entry));
  key.add(L"VersionIndependentProgID", prog_id(entry));
  key.add(L"Programmable");
  key.add(L"TypeLib", library.id());
  key.add(L"Version", library.version());
  if (entry.is_control()) {
    key.add(L"Control");
    key.add(insertable);
    const RegistryKey categories = key.add(L"Implemented Categories");
    categories.add(control_category);
    categories.add(insertable_category);
    key.add(L"MiscStatus", L"0").add(L"1", std::to_wstring(entry.misc_status));  // 1 is DVASPECT_CONTENT
    const RegistryKey verbs = key.add(L"Verb");
    // A name, menu flags (none), and the verb's attributes.
    for (const Verb& verb : control_verbs)
      verbs.add(std::to_wstring(verb.number), std::wstring(verb.name) + L",0," + std::to_wstring(verb.attributes));
    key.add(L"ToolboxBitmap32", dll + L", " + std::to_wstring(entry.toolbox_picture));
  }

  register_name(root, prog_id(entry), entry).add(L"CurVer", versioned_prog_id(entry));
  register_name(root, versioned_prog_id(entry), entry);
}

/// Class ids are kept apart for 32 and 64 bits, names are not.
bool other_word_size_registered(HKEY root, const ClassEntry& entry) {
  constexpr REGSAM other_view = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  HKEY key = nullptr;
  if (::RegOpenKeyExW(root, clsid_path(entry).c_str(), 0, KEY_READ | other_view, &key) != ERROR_SUCCESS) return false;
  ::RegCloseKey(key);
  return true;
}

void unregister_class(HKEY root, const ClassEntry& entry) {
  delete_key(root, clsid_path(entry));
  if (entry.is_page) return;
  if (other_word_size_registered(root, entry)) return;
  delete_key(root, classes_path + prog_id(entry));
  delete_key(root, classes_path + versioned_prog_id(entry));
}

void register_library(Scope scope, const LibraryAttributes& library, std::wstring dll) {
  const auto enter = scope == Scope::machine ? ::RegisterTypeLib : RegisterTypeLibForUser;
  check(enter(library.library(), dll.data(), nullptr));
}

void unregister_library(Scope scope, const LibraryAttributes& library) {
  const auto remove = scope == Scope::machine ? ::UnRegisterTypeLib : UnRegisterTypeLibForUser;
  const HRESULT result =
      remove(library->guid, library->wMajorVerNum, library->wMinorVerNum, library->lcid, library->syskind);
  // What Windows and what Wine say of a library that is not registered.
  if (result != TYPE_E_REGISTRYACCESS && result != E_INVALIDARG) check(result);
}

}  // namespace

void register_classes(Scope scope) {
  try {
    const std::wstring dll = module_path();
    const LibraryAttributes library;
    register_library(scope, library, dll);
    for (const ClassEntry& entry : class_table()) register_class(root_of(scope), entry, dll, library);
  } catch (...) {
    try {
      unregister_classes(scope);
    } catch (const std::exception&) {
      // The first failure is the one to report.
    }
    throw;
  }
}

void unregister_classes(Scope scope) {
  for (const ClassEntry& entry : class_table()) unregister_class(root_of(scope), entry);
  unregister_library(scope, LibraryAttributes());
}

}  // namespace tornby::automation
