#include "platform/windows/output_file.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "platform/windows/error.h"
#include "platform/windows/file_handle.h"

namespace tornby::windows {
namespace {

[[noreturn]] void fail() {
  throw file_error(::GetLastError());
}

template <class Interface>
class WindowsOutputFile : public Interface {
 public:
  explicit WindowsOutputFile(FileHandle file)
      : file_(std::move(file)), is_device_(::GetFileType(file_.get()) != FILE_TYPE_DISK) {}

  std::uint64_t size() const override {
    LARGE_INTEGER size{};
    if (!is_device_ && !::GetFileSizeEx(file_.get(), &size)) fail();
    return static_cast<std::uint64_t>(size.QuadPart);
  }

  void write(std::uint64_t position, ByteView bytes) override {
    constexpr std::size_t most_a_call = 0x1000000;  // WriteFile counts in 32 bits, and some servers in fewer
    move_to(position);
    while (!bytes.empty()) {
      DWORD done = 0;
      const auto want = static_cast<DWORD>(std::min(bytes.size(), most_a_call));
      if (!::WriteFile(file_.get(), bytes.data(), want, &done, nullptr)) fail();
      if (done == 0) throw RuntimeError(StandardError::device_io_error);
      bytes = bytes.subspan(done);
    }
  }

  void resize(std::uint64_t size) override {
    move_to(size);
    if (!is_device_ && !::SetEndOfFile(file_.get())) fail();
  }

  void flush() override {
    if (!is_device_ && !::FlushFileBuffers(file_.get())) fail();
  }

 protected:
  void close() { file_.close(); }

 private:
  void move_to(std::uint64_t position) {
    LARGE_INTEGER distance{};
    distance.QuadPart = static_cast<LONGLONG>(position);
    if (!is_device_ && !::SetFilePointerEx(file_.get(), distance, nullptr, FILE_BEGIN)) fail();
  }

  FileHandle file_;
  bool is_device_;
};

/// Gives `to` the access rights and the marks (hidden and the like) of `from`, as far as the user may.
void copy_attributes(const std::string& from, const std::string& to) {
  DWORD size = 0;
  ::GetFileSecurityA(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::uint8_t> rights(size);
  if (size != 0 && ::GetFileSecurityA(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size))
    ::SetFileSecurityA(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
  const DWORD attributes = ::GetFileAttributesA(from.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) ::SetFileAttributesA(to.c_str(), attributes | FILE_ATTRIBUTE_ARCHIVE);
}

class WindowsReplacement final : public WindowsOutputFile<Replacement> {
 public:
  WindowsReplacement(FileHandle file, std::string name, std::string target)
      : WindowsOutputFile(std::move(file)), name_(std::move(name)), target_(std::move(target)) {}
  ~WindowsReplacement() override {
    if (committed_) return;
    close();
    ::DeleteFileA(name_.c_str());
  }

  void commit() override {
    close();
    copy_attributes(target_, name_);
    // Not ReplaceFile: it may move the target away first, and leaves nothing there if the process then ends.
    if (!::MoveFileExA(name_.c_str(), target_.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) fail();
    committed_ = true;
  }

 private:
  std::string name_;
  std::string target_;
  bool committed_ = false;
};

FileHandle open_existing(const std::string& name) {
  return FileHandle(::CreateFileA(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, 0, nullptr));
}

/// The name of the file itself, behind links; as it was where the system does not tell.
std::string name_behind_links(const FileHandle& file, const std::string& name) {
  std::array<char, 1024> buffer;
  const DWORD length =
      ::GetFinalPathNameByHandleA(file.get(), buffer.data(), static_cast<DWORD>(buffer.size()), FILE_NAME_NORMALIZED);
  if (length == 0 || length >= buffer.size()) return name;
  return std::string(buffer.data(), length);
}

}  // namespace

std::unique_ptr<OutputFile> open_output(const std::string& name) {
  FileHandle file = open_existing(name);
  if (!file) fail();
  return std::make_unique<WindowsOutputFile<OutputFile>>(std::move(file));
}

std::unique_ptr<Replacement> start_replacement(const std::string& name) {
  FileHandle target = open_existing(name);
  if (!target && ::GetLastError() != ERROR_FILE_NOT_FOUND) fail();
  const bool exists = static_cast<bool>(target);
  if (exists && ::GetFileType(target.get()) != FILE_TYPE_DISK) return nullptr;
  const std::string target_name = exists ? name_behind_links(target, name) : name;
  target.close();
  // A superuser may open a read-only file for writing on some file systems.
  if (exists && (::GetFileAttributesA(target_name.c_str()) & FILE_ATTRIBUTE_READONLY))
    throw RuntimeError(StandardError::permission_denied);

  std::string beside = target_name + ".saving~";
  ::DeleteFileA(beside.c_str());  // left by a process that died; that of a living one is not shared and stays
  FileHandle file(::CreateFileA(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) {
    const DWORD error = ::GetLastError();
    const bool name_refused = error == ERROR_ACCESS_DENIED || (exists && error == ERROR_PATH_NOT_FOUND);
    if (name_refused || error == ERROR_FILENAME_EXCED_RANGE || error == ERROR_INVALID_NAME) return nullptr;
    throw error == ERROR_FILE_EXISTS ? RuntimeError(StandardError::permission_denied) : file_error(error);
  }
  return std::make_unique<WindowsReplacement>(std::move(file), std::move(beside), target_name);
}

void set_aside(const std::string& name) {
  constexpr int most_names = 1000;
  for (int number = 1; number <= most_names; ++number) {
    const std::string aside = name + ".unread~" + (number == 1 ? "" : std::to_string(number));
    if (::MoveFileExA(name.c_str(), aside.c_str(), 0)) return;
    const DWORD error = ::GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return;
    if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) throw file_error(error);
  }
  throw file_error(ERROR_ALREADY_EXISTS);
}

}  // namespace tornby::windows
