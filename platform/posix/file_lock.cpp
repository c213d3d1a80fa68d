#include "platform/posix/file_lock.h"

#include <fcntl.h>

#include <cerrno>
#include <limits>

#include "platform/posix/error.h"
#include "platform/posix/system_call.h"

namespace tornby::posix {
namespace {

constexpr off_t content_byte = std::numeric_limits<off_t>::max() - 1;
constexpr off_t life_byte = content_byte - 1;

enum class Answer { granted, refused, no_locks };

Answer ask(const Descriptor& file, off_t byte, short kind) {
  struct flock request {};
  request.l_type = kind;
  request.l_whence = SEEK_SET;
  request.l_start = byte;
  request.l_len = 1;
  if (uninterrupted([&] { return ::fcntl(file.get(), F_OFD_SETLK, &request); }) == 0) return Answer::granted;
  return errno == EAGAIN || errno == EACCES ? Answer::refused : Answer::no_locks;
}

void lock_content(const Descriptor& file, short kind) {
  if (!within_seconds([&] { return ask(file, content_byte, kind) != Answer::refused; })) throw file_error(EACCES);
}

}  // namespace

void lock_for_reading(const Descriptor& file) {
  lock_content(file, F_RDLCK);
}

void lock_for_writing(const Descriptor& file) {
  lock_content(file, F_WRLCK);
}

void unlock(const Descriptor& file) {
  ask(file, content_byte, F_UNLCK);
}

bool lock_for_life(const Descriptor& file, bool without_locks) {
  const Answer answer = ask(file, life_byte, F_WRLCK);
  return answer == Answer::granted || (answer == Answer::no_locks && without_locks);
}

}  // namespace tornby::posix
