#include "platform/profile.h"

#include <algorithm>

#include "platform/text.h"
#include "platform/windows/system.h"

namespace tornby {
namespace {

class WindowsProfileFiles final : public ProfileFiles {
 public:
  String folder(std::size_t capacity) override {
    std::string buffer(capacity, '\0');
    const std::size_t length = ::GetWindowsDirectoryA(buffer.data(), static_cast<UINT>(buffer.size()));
    return length < capacity ? from_ansi(std::string_view(buffer).substr(0, length)) : String();
  }

  String read_text(StringView file, StringView section, StringView key, std::size_t capacity) override {
    std::string buffer(capacity, '\0');
    const std::size_t length =
        ::GetPrivateProfileStringA(to_ansi(section).c_str(), to_ansi(key).c_str(), "", buffer.data(),
                                   static_cast<DWORD>(buffer.size()), to_ansi(file).c_str());
    return from_ansi(std::string_view(buffer).substr(0, length));
  }

  std::int32_t read_number(StringView file, StringView section, StringView key, std::int32_t otherwise) override {
    return static_cast<std::int32_t>(
        ::GetPrivateProfileIntA(to_ansi(section).c_str(), to_ansi(key).c_str(), otherwise, to_ansi(file).c_str()));
  }

  bool write_text(StringView file, StringView section, StringView key, StringView value) override {
    std::string line = to_ansi(value);
    line.resize(std::min(line.find_first_of("\r\n"), line.size()));
    return ::WritePrivateProfileStringA(to_ansi(section).c_str(), to_ansi(key).c_str(), line.c_str(),
                                        to_ansi(file).c_str()) != 0;
  }
};

}  // namespace

ProfileFiles& native_profile_files() {
  static WindowsProfileFiles profiles;
  return profiles;
}

}  // namespace tornby
