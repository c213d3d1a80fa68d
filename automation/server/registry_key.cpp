#include "automation/server/registry_key.h"

namespace tornby::automation {
namespace {

void check_status(LSTATUS status) {
  check(HRESULT_FROM_WIN32(status));
}

}  // namespace

RegistryKey RegistryKey::create(HKEY parent, const std::wstring& path) {
  HKEY key = nullptr;
  check_status(
      ::RegCreateKeyExW(parent, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key, nullptr));
  return RegistryKey(key);
}

RegistryKey::~RegistryKey() {
  if (key_) ::RegCloseKey(key_);
}

void RegistryKey::set(const std::wstring& name, const std::wstring& value) const {
  check_status(::RegSetValueExW(key_, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))));
}

RegistryKey RegistryKey::add(const std::wstring& path, const std::wstring& value) const {
  RegistryKey child = create(key_, path);
  if (!value.empty()) child.set(L"", value);
  return child;
}

void delete_key(HKEY parent, const std::wstring& path) {
  const LSTATUS status = ::RegDeleteTreeW(parent, path.c_str());
  if (status != ERROR_FILE_NOT_FOUND) check_status(status);
}

}  // namespace tornby::automation
