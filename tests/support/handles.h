// Whether handles are left open: systems hand out the lowest free number, so it does not move when none was kept.
#pragma once

#include <cstdint>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tornby::testing {

/// The number that the next handle (Windows) or file descriptor gets.
inline std::intptr_t next_handle() {
#ifdef _WIN32
  const HANDLE probe = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
  ::CloseHandle(probe);
  return reinterpret_cast<std::intptr_t>(probe);
#else
  const int probe = ::open("/dev/null", O_RDONLY);
  ::close(probe);
  return probe;
#endif
}

}  // namespace tornby::testing
