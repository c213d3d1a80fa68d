#include "platform/posix/output_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <utility>

#include "base/runtime_error.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/error.h"

namespace tornby::posix {
namespace {

struct stat status_of(const Descriptor& file) {
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) throw file_error(errno);
  return status;
}

template <class Interface>
class PosixOutputFile : public Interface {
 public:
  explicit PosixOutputFile(Descriptor file) : file_(std::move(file)), is_device_(!S_ISREG(status_of(file_).st_mode)) {}

  std::uint64_t size() const override { return is_device_ ? 0 : static_cast<std::uint64_t>(status_of(file_).st_size); }

  void write(std::uint64_t position, ByteView bytes) override {
    while (!bytes.empty()) {
      const ssize_t done = is_device_ ? ::write(file_.get(), bytes.data(), bytes.size())
                                      : ::pwrite(file_.get(), bytes.data(), bytes.size(), static_cast<off_t>(position));
      if (done < 0 && errno == EINTR) continue;
      if (done <= 0) throw file_error(done < 0 ? errno : EIO);
      bytes = bytes.subspan(static_cast<std::size_t>(done));
      position += static_cast<std::uint64_t>(done);
    }
  }

  void resize(std::uint64_t size) override {
    if (!is_device_ && ::ftruncate(file_.get(), static_cast<off_t>(size)) != 0) throw file_error(errno);
  }

  void flush() override {
    if (!is_device_ && ::fsync(file_.get()) != 0) throw file_error(errno);
  }

 private:
  Descriptor file_;
  bool is_device_;
};

/// The descriptor keeps its lock until after the rename, so that nobody takes the file for a dead process's.
class PosixReplacement final : public PosixOutputFile<Replacement> {
 public:
  PosixReplacement(Descriptor file, std::string name, std::string target)
      : PosixOutputFile(std::move(file)), name_(std::move(name)), target_(std::move(target)) {}
  ~PosixReplacement() override {
    if (!committed_) ::unlink(name_.c_str());
  }

  void commit() override {
    if (::rename(name_.c_str(), target_.c_str()) != 0) throw file_error(errno);
    committed_ = true;
  }

 private:
  std::string name_;
  std::string target_;
  bool committed_ = false;
};

/// The end of a chain of symbolic links, which need not exist.
std::string follow_links(std::string name) {
  constexpr int most_links = 40;
  for (int links = 0; links < most_links; ++links) {
    std::array<char, 4096> buffer;
    const ssize_t length = ::readlink(name.c_str(), buffer.data(), buffer.size());
    if (length < 0) return name;
    const std::string destination(buffer.data(), static_cast<std::size_t>(length));
    const std::size_t folder = destination.starts_with('/') ? 0 : name.rfind('/') + 1;
    name.resize(folder);
    name += destination;
  }
  throw file_error(ELOOP);
}

/// The status of the target; none if it does not exist.
std::optional<struct stat> writable_target(const std::string& name) {
  struct stat status {};
  if (::stat(name.c_str(), &status) != 0) {
    if (errno == ENOENT) return {};
    throw file_error(errno);
  }
  if (S_ISDIR(status.st_mode)) throw file_error(EISDIR);
  if (::faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0) throw file_error(errno);
  return status;
}

bool is_still_named(const Descriptor& file, const std::string& name) {
  struct stat by_name {};
  if (::lstat(name.c_str(), &by_name) != 0) return false;
  const struct stat own = status_of(file);
  return own.st_dev == by_name.st_dev && own.st_ino == by_name.st_ino;
}

/// False when another process holds the lock. A file system without locks grants every one.
bool lock(const Descriptor& file) {
  return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Makes a file of that name and locks it. A file that is there already is either locked by a living process, which is
/// an error, or was left by a dead one and is removed. No descriptor if the name cannot be had.
Descriptor create_locked(const std::string& name, mode_t mode) {
  constexpr int most_tries = 100;  // each but the last lost a race against another process
  for (int tries = 0; tries < most_tries; ++tries) {
    Descriptor file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    const bool is_new = static_cast<bool>(file);
    if (!is_new) {
      if (errno == EACCES || errno == EPERM || errno == ENAMETOOLONG) break;
      if (errno != EEXIST) throw file_error(errno);
      file = Descriptor(::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
      if (!file && errno == ENOENT) continue;
      if (!file) break;
    }
    if (!lock(file)) throw RuntimeError(StandardError::permission_denied);
    if (!is_still_named(file, name)) continue;
    if (is_new) return file;
    if (::unlink(name.c_str()) != 0) break;
  }
  return Descriptor(-1);
}

}  // namespace

std::unique_ptr<OutputFile> open_output(const std::string& name) {
  Descriptor file(::open(name.c_str(), O_WRONLY | O_CLOEXEC));
  if (!file) throw file_error(errno);
  return std::make_unique<PosixOutputFile<OutputFile>>(std::move(file));
}

std::unique_ptr<Replacement> start_replacement(const std::string& name) {
  const std::string target = follow_links(name);
  const auto status = writable_target(target);
  if (status && !S_ISREG(status->st_mode)) return nullptr;

  std::string beside = target + ".saving~";
  constexpr mode_t everybody = 0666;
  Descriptor file = create_locked(beside, status ? status->st_mode & everybody : everybody);
  if (!file) return nullptr;
  const int descriptor = file.get();
  auto replacement = std::make_unique<PosixReplacement>(std::move(file), std::move(beside), target);
  if (status) {
    // Owner before rights: a change of owner takes some rights away. A stranger may not give a file away.
    [[maybe_unused]] const int refused = ::fchown(descriptor, status->st_uid, status->st_gid);
    if (::fchmod(descriptor, status->st_mode & 0777) != 0) throw file_error(errno);
  }
  return replacement;
}

void set_aside(const std::string& name) {
  const std::string present = follow_links(name);
  constexpr int most_names = 1000;
  for (int number = 1; number <= most_names; ++number) {
    const std::string aside = present + ".unread~" + (number == 1 ? "" : std::to_string(number));
    int result = ::renameat2(AT_FDCWD, present.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE);
    if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {  // an older file system
      result = ::link(present.c_str(), aside.c_str());
      if (result == 0) result = ::unlink(present.c_str());
    }
    if (result == 0 || errno == ENOENT) return;
    if (errno != EEXIST) throw file_error(errno);
  }
  throw file_error(EEXIST);
}

}  // namespace tornby::posix
