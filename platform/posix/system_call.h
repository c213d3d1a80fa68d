// How system calls are made.
#pragma once

#include <fcntl.h>
#include <sys/types.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/posix/descriptor.h"

namespace tornby::posix {

/// Repeats a call for as long as a signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

/// Tries for a few seconds. False when it still does not succeed then.
template <class Attempt>
bool within_seconds(Attempt attempt) {
  constexpr int most_tries = 5000;
  for (int tries = 0; tries < most_tries; ++tries) {
    if (attempt()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return attempt();
}

/// Never waits for the other end of a pipe or for a device; only, for a few seconds, for another system's cached copy
/// of the file to be given up.
inline Descriptor open_at(int folder, const char* name, int flags, mode_t mode = 0) {
  Descriptor file(-1);
  within_seconds([&] {
    file = Descriptor(uninterrupted([&] { return ::openat(folder, name, flags | O_NONBLOCK | O_CLOEXEC, mode); }));
    return file || errno != EWOULDBLOCK;
  });
  return file;
}

}  // namespace tornby::posix
