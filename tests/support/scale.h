// How much work a large test does.
#pragma once

namespace tornby::testing {

/// `count`, but a hundredth on Windows, whose tests run on a heap that is checked whole at every turn.
constexpr unsigned scaled(unsigned count) {
#ifdef _WIN32
  return count / 100;
#else
  return count;
#endif
}

}  // namespace tornby::testing
