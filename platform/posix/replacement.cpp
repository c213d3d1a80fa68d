#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <utility>
#include <vector>

#include "platform/posix/attributes.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/error.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/output_file.h"
#include "platform/posix/place.h"
#include "platform/posix/system_call.h"

namespace tornby::posix {
namespace {

/// By this bit, which nobody else gives to a file, a new file that its maker has left is known as such.
constexpr mode_t mark = S_ISVTX;

constexpr int most_names = 100;

bool names(const Place& place, const std::string& name, const struct stat& file) {
  struct stat named {};
  return ::fstatat(place.folder.get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 && named.st_dev == file.st_dev &&
         named.st_ino == file.st_ino;
}

bool names(const Place& place, const std::string& name, const Descriptor& file) {
  struct stat own {};
  return ::fstat(file.get(), &own) == 0 && names(place, name, own);
}

/// The new file is called by its own name as long as `name_` says so. Its descriptor keeps the lock that shows that
/// this process lives.
class PosixReplacement final : public Replacement {
 public:
  explicit PosixReplacement(Place place) : place_(std::move(place)) {}
  ~PosixReplacement() override {
    if (!kept_) remove_own();
  }

  /// False when no file can be made in the folder.
  bool create(mode_t rights) {
    int tries = 0;
    for (int number = 1; number <= most_names; ++number) {
      std::string name = name_beside(place_, ".saving~", number);
      file_ = open_at(place_.folder.get(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, rights | mark);
      if (file_) {
        name_ = std::move(name);
        if (lock_for_life(file_, true) && names(place_, name_, file_)) return true;
        name_.clear();  // another process took it for a dead one's, and removes it
        if (++tries <= most_names) --number;
      } else if (errno == EEXIST) {
        remember_leftover(std::move(name));
      } else if (errno == EACCES || errno == EPERM || errno == ENAMETOOLONG) {
        return false;
      } else {
        throw file_error(errno);
      }
    }
    return false;
  }

  void take_after(const Descriptor& target, const struct stat& status) {
    is_like_target_ = carry_over(target, status, file_, mark);
  }

  void write(ByteView bytes) override {
    while (!bytes.empty()) {
      const ssize_t done = uninterrupted([&] { return ::write(file_.get(), bytes.data(), bytes.size()); });
      if (done <= 0) throw file_error(done < 0 ? errno : EIO);
      bytes = bytes.subspan(static_cast<std::size_t>(done));
    }
  }

  bool commit() override {
    struct stat status {};
    if (::fstat(file_.get(), &status) != 0) throw file_error(errno);
    if (uninterrupted([&] { return ::fsync(file_.get()); }) != 0) throw file_error(errno);
    const int folder = place_.folder.get();
    if (!is_like_target_ || ::renameat(folder, name_.c_str(), folder, place_.name.c_str()) != 0) return false;
    name_.clear();
    ::fchmod(file_.get(), status.st_mode & 0777);
    uninterrupted([&] { return ::fsync(folder); });  // not every file system can
    remove_leftovers();
    return true;
  }

  std::size_t read(std::uint64_t position, std::span<std::uint8_t> out) override {
    std::size_t total = 0;
    while (total < out.size()) {
      const auto from = static_cast<off_t>(position + total);
      const ssize_t got =
          uninterrupted([&] { return ::pread(file_.get(), out.data() + total, out.size() - total, from); });
      if (got < 0) throw file_error(errno);
      if (got == 0) break;
      total += static_cast<std::size_t>(got);
    }
    return total;
  }

  void keep() override { kept_ = true; }

  void done() override {
    remove_own();
    remove_leftovers();
  }

 private:
  void remove_own() {
    if (!name_.empty()) ::unlinkat(place_.folder.get(), name_.c_str(), 0);
    name_.clear();
  }

  /// What a dead process left, locked against others who would remove it.
  struct Leftover {
    Descriptor file;
    std::string name;
  };

  void remember_leftover(std::string name) {
    Descriptor file = open_at(place_.folder.get(), name.c_str(), O_WRONLY | O_NOFOLLOW);
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || !(status.st_mode & mark)) return;
    if (lock_for_life(file, false)) leftovers_.push_back({std::move(file), std::move(name)});
  }

  /// Only once the target holds the new text: one of them may be all that is left of an earlier text. The first one
  /// goes last, so that the others are still found should this process die meanwhile.
  void remove_leftovers() {
    for (; !leftovers_.empty(); leftovers_.pop_back()) {
      const Leftover& last = leftovers_.back();
      if (names(place_, last.name, last.file)) ::unlinkat(place_.folder.get(), last.name.c_str(), 0);
    }
  }

  Place place_;
  std::string name_;
  Descriptor file_{-1};
  bool is_like_target_ = true;
  bool kept_ = false;
  std::vector<Leftover> leftovers_;
};

}  // namespace

std::unique_ptr<Replacement> start_replacement(const std::string& name) {
  for (int tries = 0; tries < most_names; ++tries) {
    const Descriptor target = open_at(AT_FDCWD, name.c_str(), O_WRONLY);
    if (!target && errno != ENOENT) throw file_error(errno);
    struct stat status {};
    if (target) {
      if (::fstat(target.get(), &status) != 0) throw file_error(errno);
      if (!S_ISREG(status.st_mode)) return nullptr;
    }

    Place place = place_of(name);
    if (target && !names(place, place.name, status)) continue;  // somebody else has just replaced it
    auto replacement = std::make_unique<PosixReplacement>(std::move(place));
    constexpr mode_t owner_only = 0600;
    constexpr mode_t everybody = 0666;  // as far as the user lets them
    if (!replacement->create(target ? owner_only : everybody)) return nullptr;
    if (target) replacement->take_after(target, status);
    return replacement;
  }
  return nullptr;  // the name leads to it by other ways than folders
}

void set_aside(const std::string& name) {
  const Place place = place_of(name);
  const int folder = place.folder.get();
  struct stat status {};
  if (::fstatat(folder, place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT) return;
  if (S_ISDIR(status.st_mode)) throw file_error(EISDIR);
  if (!S_ISREG(status.st_mode)) return;
  constexpr int most = 1000;
  for (int number = 1; number <= most; ++number) {
    const std::string aside = name_beside(place, ".unread~", number);
    int result = ::renameat2(folder, place.name.c_str(), folder, aside.c_str(), RENAME_NOREPLACE);
    if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {  // an older file system
      result = ::linkat(folder, place.name.c_str(), folder, aside.c_str(), 0);
      if (result == 0) result = ::unlinkat(folder, place.name.c_str(), 0);
    }
    if (result == 0 || errno == ENOENT) return;
    if (errno != EEXIST) throw file_error(errno);
  }
  throw file_error(EEXIST);
}

}  // namespace tornby::posix
