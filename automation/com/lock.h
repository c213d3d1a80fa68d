// A lock that allocates nothing, for std::lock_guard. (The run-time library's mutex allocates when first locked.)
#pragma once

#include "automation/com/com.h"

namespace tornby::automation {

class Lock {
 public:
  void lock() { ::AcquireSRWLockExclusive(&lock_); }
  void unlock() { ::ReleaseSRWLockExclusive(&lock_); }

 private:
  SRWLOCK lock_ = SRWLOCK_INIT;
};

}  // namespace tornby::automation
