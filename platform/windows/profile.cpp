#include "platform/profile.h"

#include <algorithm>

#include "platform/windows/system.h"
#include "platform/windows/text.h"

namespace tornby {
namespace {

using windows::ansi;
using windows::wide_text;

class WindowsProfileFiles final : public ProfileFiles {
 public:
  String folder(std::size_t capacity) override {
    std::string buffer(capacity, '\0');
    const std::size_t length = ::GetWindowsDirectoryA(buffer.data(), static_cast<UINT>(buffer.size()));
    return length < capacity ? wide_text(std::string_view(buffer).substr(0, length)) : String();
  }

  String read_text(StringView file, StringView section, StringView key, std::size_t capacity) override {
    std::string buffer(capacity, '\0');
    const std::size_t length = ::GetPrivateProfileStringA(ansi(section).c_str(), ansi(key).c_str(), "", buffer.data(),
                                                          static_cast<DWORD>(buffer.size()), ansi(file).c_str());
    return wide_text(std::string_view(buffer).substr(0, length));
  }

  std::int32_t read_number(StringView file, StringView section, StringView key, std::int32_t otherwise) override {
    return static_cast<std::int32_t>(
        ::GetPrivateProfileIntA(ansi(section).c_str(), ansi(key).c_str(), otherwise, ansi(file).c_str()));
  }

  bool write_text(StringView file, StringView section, StringView key, StringView value) override {
    std::string line = ansi(value);
    line.resize(std::min(line.find_first_of("\r\n"), line.size()));
    return ::WritePrivateProfileStringA(ansi(section).c_str(), ansi(key).c_str(), line.c_str(), ansi(file).c_str()) !=
           0;
  }
};

}  // namespace

ProfileFiles& native_profile_files() {
  static WindowsProfileFiles profiles;
  return profiles;
}

}  // namespace tornby
