// A registry key that closes itself.
#pragma once

#include <string>

#include "automation/com/com.h"

namespace tornby::automation {

class RegistryKey {
 public:
  /// Opens the key, or creates it, for writing.
  static RegistryKey create(HKEY parent, const std::wstring& path);

  ~RegistryKey();
  RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  RegistryKey& operator=(RegistryKey&&) = delete;

  HKEY get() const { return key_; }

  /// Sets a string value; the empty name is the key's default value.
  void set(const std::wstring& name, const std::wstring& value) const;

  /// Creates a key below this one and sets its default value.
  RegistryKey add(const std::wstring& path, const std::wstring& value = {}) const;

 private:
  explicit RegistryKey(HKEY key) : key_(key) {}
  HKEY key_;
};

/// Deletes a key with all below it. A key that is not there is no failure.
void delete_key(HKEY parent, const std::wstring& path);

}  // namespace tornby::automation
