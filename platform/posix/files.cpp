#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/runtime_error.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/error.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/file_name.h"
#include "platform/posix/output_file.h"
#include "platform/posix/system_call.h"

namespace tornby {
namespace {

std::uint64_t checked_size(const struct stat& status) {
  if (!S_ISREG(status.st_mode)) throw RuntimeError(StandardError::path_file_access_error);
  return static_cast<std::uint64_t>(status.st_size);
}

class PosixInputFile final : public InputFile {
 public:
  explicit PosixInputFile(posix::Descriptor file) : file_(std::move(file)) {
    posix::lock_for_reading(file_);
    struct stat status {};
    if (::fstat(file_.get(), &status) != 0) throw posix::file_error(errno);
    size_ = checked_size(status);
  }

  std::uint64_t size() const override { return size_; }

  std::size_t read(std::span<std::uint8_t> out) override {
    std::size_t total = 0;
    while (total < out.size()) {
      const ssize_t got =
          posix::uninterrupted([&] { return ::read(file_.get(), out.data() + total, out.size() - total); });
      if (got < 0) throw posix::file_error(errno);
      if (got == 0) break;
      total += static_cast<std::size_t>(got);
    }
    return total;
  }

  void leave_open() override {
    posix::unlock(file_);
    file_.release();
  }

 private:
  posix::Descriptor file_;
  std::uint64_t size_ = 0;
};

class PosixFiles final : public Files {
 public:
  std::uint64_t size(StringView name) const override {
    struct stat status {};
    if (::stat(posix::file_name(name).c_str(), &status) != 0) throw posix::file_error(errno);
    return checked_size(status);
  }

  std::unique_ptr<InputFile> open_for_reading(StringView name) const override {
    posix::Descriptor file = posix::open_at(AT_FDCWD, posix::file_name(name).c_str(), O_RDONLY);
    if (!file) throw posix::file_error(errno);
    return std::make_unique<PosixInputFile>(std::move(file));
  }

  std::unique_ptr<OutputFile> open_for_writing(StringView name) const override {
    return posix::open_output(posix::file_name(name));
  }

  std::unique_ptr<Replacement> replace(StringView name) const override {
    return posix::start_replacement(posix::file_name(name));
  }

  void set_aside(StringView name) const override { posix::set_aside(posix::file_name(name)); }
};

}  // namespace

const Files& native_files() {
  static const PosixFiles files;
  return files;
}

}  // namespace tornby
