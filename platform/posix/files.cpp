#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/runtime_error.h"
#include "platform/posix/error.h"
#include "platform/posix/file_name.h"

namespace tornby {
namespace {

class Descriptor {
 public:
  explicit Descriptor(int value) : value_(value) {}
  ~Descriptor() {
    if (value_ >= 0) ::close(value_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return value_; }
  int release() { return std::exchange(value_, -1); }

 private:
  int value_;
};

std::uint64_t checked_size(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) throw RuntimeError(StandardError::path_file_access_error);
  return static_cast<std::uint64_t>(status.st_size);
}

class PosixInputFile final : public InputFile {
 public:
  explicit PosixInputFile(int descriptor) : descriptor_(descriptor) {}

  std::uint64_t size() const override {
    struct stat status {};
    if (::fstat(descriptor_.get(), &status) != 0) throw posix::file_error(errno);
    return checked_size(status);
  }

  std::size_t read(std::span<std::uint8_t> out) override {
    std::size_t total = 0;
    while (total < out.size()) {
      const ssize_t got = ::read(descriptor_.get(), out.data() + total, out.size() - total);
      if (got == 0) break;
      if (got > 0) {
        total += static_cast<std::size_t>(got);
      } else if (errno != EINTR) {
        throw posix::file_error(errno);
      }
    }
    return total;
  }

  void leave_open() override { descriptor_.release(); }

 private:
  Descriptor descriptor_;
};

class PosixFiles final : public Files {
 public:
  std::uint64_t size(StringView name) const override {
    struct stat status {};
    if (::stat(posix::file_name(name).c_str(), &status) != 0) throw posix::file_error(errno);
    return checked_size(status);
  }

  std::unique_ptr<InputFile> open_for_reading(StringView name) const override {
    const int descriptor = ::open(posix::file_name(name).c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) throw posix::file_error(errno);
    return std::make_unique<PosixInputFile>(descriptor);
  }
};

}  // namespace

const Files& native_files() {
  static const PosixFiles files;
  return files;
}

}  // namespace tornby
