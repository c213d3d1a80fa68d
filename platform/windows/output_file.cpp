#include "platform/windows/output_file.h"

#include <algorithm>
#include <utility>

#include "base/runtime_error.h"
#include "platform/windows/error.h"
#include "platform/windows/file_lock.h"
#include "platform/windows/patience.h"

namespace tornby::windows {
namespace {

[[noreturn]] void fail() {
  throw file_error(::GetLastError());
}

class WindowsOutputFile final : public OutputFile {
 public:
  explicit WindowsOutputFile(FileHandle file)
      : file_(std::move(file)), is_device_(::GetFileType(file_.get()) != FILE_TYPE_DISK) {
    if (!is_device_) {
      lock_for_writing(file_);
    } else {
      COMMTIMEOUTS waits{};
      waits.WriteTotalTimeoutConstant = 5000;
      ::SetCommTimeouts(file_.get(), &waits);  // other devices have none
    }
  }

  std::uint64_t size() const override {
    LARGE_INTEGER size{};
    if (!is_device_ && !::GetFileSizeEx(file_.get(), &size)) fail();
    return static_cast<std::uint64_t>(size.QuadPart);
  }

  void write(std::uint64_t position, ByteView bytes) override {
    move_to(position);
    write_all(file_, bytes);
  }

  void resize(std::uint64_t size) override {
    move_to(size);
    if (!is_device_ && !::SetEndOfFile(file_.get())) fail();
  }

  void flush() override {
    if (!is_device_ && !::FlushFileBuffers(file_.get())) fail();
  }

 private:
  void move_to(std::uint64_t position) {
    LARGE_INTEGER distance{};
    distance.QuadPart = static_cast<LONGLONG>(position);
    if (!is_device_ && !::SetFilePointerEx(file_.get(), distance, nullptr, FILE_BEGIN)) fail();
  }

  FileHandle file_;
  bool is_device_;
};

}  // namespace

FileHandle open_shared(const std::wstring& name, DWORD disposition) {
  FileHandle file(INVALID_HANDLE_VALUE);
  patiently(half_a_second, [&] {
    file = FileHandle(::CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file || ::GetLastError() != ERROR_SHARING_VIOLATION;
  });
  return file;
}

void write_all(const FileHandle& file, ByteView bytes) {
  constexpr std::size_t most_a_call = 0x1000000;  // WriteFile counts in 32 bits, and some servers in fewer
  while (!bytes.empty()) {
    DWORD done = 0;
    const auto want = static_cast<DWORD>(std::min(bytes.size(), most_a_call));
    if (!::WriteFile(file.get(), bytes.data(), want, &done, nullptr)) fail();
    if (done == 0) throw RuntimeError(StandardError::device_io_error);
    bytes = bytes.subspan(done);
  }
}

std::unique_ptr<OutputFile> open_output(const std::wstring& name) {
  FileHandle file = open_shared(name, OPEN_ALWAYS);
  if (!file) fail();
  if (::GetFileType(file.get()) == FILE_TYPE_PIPE) throw RuntimeError(StandardError::path_file_access_error);
  return std::make_unique<WindowsOutputFile>(std::move(file));
}

}  // namespace tornby::windows
