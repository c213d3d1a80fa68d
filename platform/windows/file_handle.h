// An owned file handle.
#pragma once

#include <utility>

#include "platform/windows/system.h"

namespace tornby::windows {

class FileHandle {
 public:
  explicit FileHandle(HANDLE value) : value_(value) {}
  ~FileHandle() { close(); }
  FileHandle(FileHandle&& other) noexcept : value_(other.release()) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  HANDLE get() const { return value_; }
  HANDLE release() { return std::exchange(value_, INVALID_HANDLE_VALUE); }
  void close() {
    if (*this) ::CloseHandle(release());
  }
  explicit operator bool() const { return value_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE value_;
};

}  // namespace tornby::windows
