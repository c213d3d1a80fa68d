// Checks of run-time errors.
#pragma once

#include <gtest/gtest.h>

#include "base/runtime_error.h"

namespace tornby::testing {

/// The number of the run-time error that `action` raises; 0 when it raises none.
template <class Action>
std::int32_t raised_number(Action action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace tornby::testing
