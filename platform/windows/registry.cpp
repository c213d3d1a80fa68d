#include "platform/registry.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/code_page.h"
#include "platform/windows/system.h"

namespace tornby {
namespace {

/// A name for an ANSI entry point; nothing when it holds a NUL, which would cut it short.
std::optional<std::string> ansi_name(StringView name) {
  if (name.find(u'\0') != StringView::npos) return std::nullopt;
  const Bytes bytes = native_code_page().encode(name);
  return std::string(bytes.begin(), bytes.end());
}

class OpenKey {
 public:
  OpenKey(std::int32_t root, const std::string& subkey) {
    const auto parent = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG_PTR>(root)));
    if (::RegOpenKeyExA(parent, subkey.c_str(), 0, KEY_QUERY_VALUE, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~OpenKey() {
    if (key_) ::RegCloseKey(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  std::optional<Bytes> value(const std::string& name) const {
    if (!key_) return std::nullopt;
    DWORD type = 0, size = 0;
    LSTATUS status = ::RegQueryValueExA(key_, name.c_str(), nullptr, &type, nullptr, &size);
    Bytes data;
    while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
      data.resize(std::max<std::size_t>(size + 1u, 2 * data.size()));  // never empty: that would only ask for the size
      size = static_cast<DWORD>(data.size());
      status = ::RegQueryValueExA(key_, name.c_str(), nullptr, &type, data.data(), &size);
      if (status != ERROR_SUCCESS) continue;
      data.resize(size);
      return data;
    }
    return std::nullopt;
  }

 private:
  HKEY key_ = nullptr;
};

class WindowsRegistry final : public Registry {
 public:
  std::optional<String> value(std::int32_t root, StringView subkey, StringView name) const override {
    const auto key_name = ansi_name(subkey), value_name = ansi_name(name);
    if (!key_name || !value_name) return std::nullopt;
    std::optional<Bytes> data = OpenKey(root, *key_name).value(*value_name);
    if (!data) return std::nullopt;
    if (!data->empty()) data->pop_back();
    return native_code_page().decode(*data);
  }
};

}  // namespace

const Registry& native_registry() {
  static const WindowsRegistry registry;
  return registry;
}

}  // namespace tornby
