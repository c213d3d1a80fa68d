#include "platform/folders.h"

#include <array>

#include "platform/code_page.h"
#include "platform/windows/system.h"

namespace tornby {
namespace {

String directory(UINT(WINAPI* query)(LPSTR, UINT)) {
  std::array<char, 255> buffer{};
  const UINT length = query(buffer.data(), static_cast<UINT>(buffer.size()));
  if (length >= buffer.size()) return {};  // the size that it would take
  return native_code_page().decode(ByteView(reinterpret_cast<const std::uint8_t*>(buffer.data()), length));
}

class WindowsFolders final : public Folders {
 public:
  String windows() const override { return directory(&::GetWindowsDirectoryA); }
  String system() const override { return directory(&::GetSystemDirectoryA); }
};

}  // namespace

const Folders& native_folders() {
  static const WindowsFolders folders;
  return folders;
}

}  // namespace tornby
