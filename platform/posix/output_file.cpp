#include "platform/posix/output_file.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "platform/posix/descriptor.h"
#include "platform/posix/error.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/system_call.h"

namespace tornby::posix {
namespace {

struct stat status_of(const Descriptor& file) {
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) throw file_error(errno);
  return status;
}

/// Waits for a few seconds until a device takes more.
bool is_ready(const Descriptor& device) {
  constexpr int milliseconds = 5000;
  pollfd state{device.get(), POLLOUT, 0};
  return uninterrupted([&] { return ::poll(&state, 1, milliseconds); }) == 1 && (state.revents & POLLOUT);
}

class PosixOutputFile final : public OutputFile {
 public:
  explicit PosixOutputFile(Descriptor file) : file_(std::move(file)), is_device_(!S_ISREG(status_of(file_).st_mode)) {
    if (!is_device_) lock_for_writing(file_);
  }

  std::uint64_t size() const override { return is_device_ ? 0 : static_cast<std::uint64_t>(status_of(file_).st_size); }

  void write(std::uint64_t position, ByteView bytes) override {
    while (!bytes.empty()) {
      const ssize_t done = uninterrupted([&] {
        return is_device_ ? ::write(file_.get(), bytes.data(), bytes.size())
                          : ::pwrite(file_.get(), bytes.data(), bytes.size(), static_cast<off_t>(position));
      });
      if (done < 0 && errno == EAGAIN && is_ready(file_)) continue;
      if (done <= 0) throw file_error(done < 0 ? errno : EIO);
      bytes = bytes.subspan(static_cast<std::size_t>(done));
      position += static_cast<std::uint64_t>(done);
    }
  }

  void resize(std::uint64_t size) override {
    if (!is_device_ && uninterrupted([&] { return ::ftruncate(file_.get(), static_cast<off_t>(size)); }) != 0)
      throw file_error(errno);
  }

  void flush() override {
    if (!is_device_ && uninterrupted([&] { return ::fsync(file_.get()); }) != 0) throw file_error(errno);
  }

 private:
  Descriptor file_;
  bool is_device_;
};

}  // namespace

std::unique_ptr<OutputFile> open_output(const std::string& name) {
  constexpr mode_t everybody = 0666;
  Descriptor file = open_at(AT_FDCWD, name.c_str(), O_WRONLY);
  if (!file && errno == ENOENT) file = open_at(AT_FDCWD, name.c_str(), O_WRONLY | O_CREAT, everybody);
  if (!file) throw file_error(errno);
  const mode_t kind = status_of(file).st_mode;
  if (S_ISFIFO(kind) || S_ISSOCK(kind)) throw file_error(ESPIPE);
  return std::make_unique<PosixOutputFile>(std::move(file));
}

}  // namespace tornby::posix
