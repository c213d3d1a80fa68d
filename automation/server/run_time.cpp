// For the first exception of a process and for its first local static the run-time library allocates locks without
// looking whether it got them, and so does the reserve from which exceptions come when memory has run out. All of them
// are made here: an exception is thrown as usual, and one while malloc fails for this thread. The linker sends the
// DLL's calls of malloc here (--wrap).
#include "automation/server/run_time.h"

#include <atomic>
#include <cstddef>
#include <exception>

#include "automation/com/com.h"

extern "C" void* __real_malloc(std::size_t size);

namespace {

struct Rehearsal : std::exception {};

std::atomic<DWORD> refused_thread = 0;  // its next malloc fails

void rehearse() {
  try {
    static const std::exception_ptr none = std::current_exception();
    throw Rehearsal();
  } catch (const Rehearsal&) {
  }
}

}  // namespace

void tornby::automation::prepare_run_time() {
  static std::atomic<bool> is_ready = false;
  if (is_ready.exchange(true)) return;
  rehearse();
  refused_thread = ::GetCurrentThreadId();
  rehearse();
}

extern "C" void* __wrap_malloc(std::size_t size) {
  const DWORD refused = refused_thread.load(std::memory_order_relaxed);
  if (refused == 0 || refused != ::GetCurrentThreadId()) return __real_malloc(size);
  refused_thread = 0;
  return nullptr;
}
