#include "platform/windows/file_lock.h"

#include "platform/windows/error.h"
#include "platform/windows/patience.h"

namespace tornby::windows {
namespace {

constexpr DWORD content_byte_high = 0x40000000;

bool lock(const FileHandle& file, DWORD kind, DWORD from_high, DWORD length_high, DWORD length_low) {
  OVERLAPPED from{};
  from.OffsetHigh = from_high;
  return ::LockFileEx(file.get(), kind | LOCKFILE_FAIL_IMMEDIATELY, 0, length_low, length_high, &from) ||
         ::GetLastError() != ERROR_LOCK_VIOLATION;
}

void lock_content(const FileHandle& file, DWORD kind) {
  constexpr unsigned milliseconds = 5000;
  if (!patiently(milliseconds, [&] { return lock(file, kind, content_byte_high, 0, 1); }))
    throw file_error(ERROR_LOCK_VIOLATION);
}

}  // namespace

void lock_for_reading(const FileHandle& file) {
  lock_content(file, 0);
}

void lock_for_writing(const FileHandle& file) {
  lock_content(file, LOCKFILE_EXCLUSIVE_LOCK);
  lock(file, LOCKFILE_EXCLUSIVE_LOCK, 0, content_byte_high, 0);  // for other programs; one that has a lock keeps it
}

void unlock(const FileHandle& file) {
  OVERLAPPED from{};
  from.OffsetHigh = content_byte_high;
  ::UnlockFileEx(file.get(), 0, 1, 0, &from);
}

}  // namespace tornby::windows
