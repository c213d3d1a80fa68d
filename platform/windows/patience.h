// Trying again what another program stands in the way of.
#pragma once

#include "platform/windows/system.h"

namespace tornby::windows {

/// Tries for that time. False when it still does not succeed then.
template <class Attempt>
bool patiently(unsigned milliseconds, Attempt attempt) {
  const ULONGLONG start = ::GetTickCount64();
  while (!attempt()) {
    if (::GetTickCount64() - start >= milliseconds) return false;
    ::Sleep(1);
  }
  return true;
}

/// How long somebody who has the file open is waited for.
constexpr unsigned half_a_second = 500;

}  // namespace tornby::windows
