#include "platform/files.h"

#include <algorithm>
#include <utility>

#include "base/runtime_error.h"
#include "platform/windows/error.h"
#include "platform/windows/file_handle.h"
#include "platform/windows/file_lock.h"
#include "platform/windows/file_name.h"
#include "platform/windows/output_file.h"
#include "platform/windows/system.h"

namespace tornby {
namespace {

class WindowsInputFile final : public InputFile {
 public:
  explicit WindowsInputFile(windows::FileHandle file) : file_(std::move(file)) {
    LARGE_INTEGER size{};
    if (::GetFileType(file_.get()) != FILE_TYPE_DISK) throw RuntimeError(StandardError::path_file_access_error);
    windows::lock_for_reading(file_);
    if (!::GetFileSizeEx(file_.get(), &size)) throw windows::file_error(::GetLastError());
    size_ = static_cast<std::uint64_t>(size.QuadPart);
  }

  std::uint64_t size() const override { return size_; }

  std::size_t read(std::span<std::uint8_t> out) override {
    constexpr std::size_t most_a_call = 0x40000000;  // ReadFile counts in 32 bits
    std::size_t total = 0;
    while (total < out.size()) {
      const auto want = static_cast<DWORD>(std::min(out.size() - total, most_a_call));
      DWORD got = 0;
      if (!::ReadFile(file_.get(), out.data() + total, want, &got, nullptr))
        throw windows::file_error(::GetLastError());
      if (got == 0) break;
      total += got;
    }
    return total;
  }

  void leave_open() override {
    windows::unlock(file_);
    file_.release();
  }

 private:
  windows::FileHandle file_;
  std::uint64_t size_ = 0;
};

class WindowsFiles final : public Files {
 public:
  std::uint64_t size(StringView name) const override {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(windows::file_name(name).c_str(), GetFileExInfoStandard, &data))
      throw windows::file_error(::GetLastError());
    if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) throw RuntimeError(StandardError::path_file_access_error);
    return static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
  }

  std::unique_ptr<InputFile> open_for_reading(StringView name) const override {
    windows::FileHandle file(::CreateFileW(windows::file_name(name).c_str(), GENERIC_READ,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                           OPEN_EXISTING, 0, nullptr));
    if (!file) throw windows::file_error(::GetLastError());
    return std::make_unique<WindowsInputFile>(std::move(file));
  }

  std::unique_ptr<OutputFile> open_for_writing(StringView name) const override {
    return windows::open_output(windows::file_name(name));
  }

  std::unique_ptr<Replacement> replace(StringView name) const override {
    return windows::start_replacement(windows::file_name(name));
  }

  void set_aside(StringView name) const override { windows::set_aside(windows::file_name(name)); }
};

}  // namespace

const Files& native_files() {
  static const WindowsFiles files;
  return files;
}

}  // namespace tornby
