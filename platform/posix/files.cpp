#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/runtime_error.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/error.h"
#include "platform/posix/file_name.h"
#include "platform/posix/output_file.h"

namespace tornby {
namespace {

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
  posix::Descriptor descriptor_;
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
