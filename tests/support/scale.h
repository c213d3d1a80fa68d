// How much work a large test does.
#pragma once

#include <cstdlib>

namespace tornby::testing {

/// `count`, but a hundredth on Windows, whose tests run on a heap that is checked whole at every turn.
constexpr unsigned scaled(unsigned count) {
#ifdef _WIN32
  return count / 100;
#else
  return count;
#endif
}

/// `count`, and ten times as many in a thorough run.
inline unsigned rounds(unsigned count) {
  return std::getenv("TORNBY_THOROUGH") ? 10 * count : count;
}

}  // namespace tornby::testing
