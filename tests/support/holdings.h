// What this process holds of the system, where a leak shows.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "support/handles.h"
#include "support/scale.h"

namespace tornby::testing {

struct Holdings {
  int drawing_objects;      ///< pens, brushes, fonts, bitmaps and so on; 0 in a 32-bit process on a 64-bit Windows
  int windows;              ///< without a parent, and message windows
  int user_objects;         ///< windows, menus, accelerators, pointers: of all processes, so that it moves a little
  std::intptr_t handle;     ///< the number that the next one gets
  std::size_t private_kib;  ///< memory that no other process shares

  static Holdings now();
};

/// Runs a round many times and compares what is held before and after. On a heap that is checked at every turn a
/// thousand rounds take hours and find no more: a thorough run has them on the plain one.
template <class Round>
void expect_nothing_left_behind(Round round) {
  const auto run = [&](unsigned count) {
    for (; count > 0; --count) round();
  };
  run(10);  // what the system keeps for good it keeps now
  const unsigned count = std::getenv("TORNBY_CHECKED_HEAP") ? 100 : rounds(100);
  const Holdings before = Holdings::now();
  run(count);
  const Holdings after = Holdings::now();
  EXPECT_EQ(after.drawing_objects, before.drawing_objects);
  EXPECT_EQ(after.windows, before.windows);
  EXPECT_LT(after.user_objects, before.user_objects + static_cast<int>(count / 2));
  EXPECT_EQ(after.handle, before.handle);
  EXPECT_LT(after.private_kib, before.private_kib + 256 + count / 4) << "a quarter of a KiB in each round";
  std::printf(
      "%u rounds: drawing objects %d to %d, windows %d to %d, user objects %d to %d, next handle %ld to %ld, %lu to "
      "%lu KiB\n",
      count, before.drawing_objects, after.drawing_objects, before.windows, after.windows, before.user_objects,
      after.user_objects, static_cast<long>(before.handle), static_cast<long>(after.handle),
      static_cast<unsigned long>(before.private_kib), static_cast<unsigned long>(after.private_kib));
}

}  // namespace tornby::testing
