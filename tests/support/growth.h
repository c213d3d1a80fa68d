// Whether the time of some work grows in proportion to its size.
#pragma once

#ifdef __linux__
#include <malloc.h>
#endif

#include <algorithm>
#include <ctime>

namespace tornby::testing {

constexpr double most_growth = 256;

/// How many times as much processor time `work(32 * size)` takes as `work(size)`: 32, and a few times that for the cost
/// of large memory, when it takes a step for each item; 1024 when it takes one for each pair. What else the machine
/// does only adds, so a few tries are made.
template <class Work>
double growth(unsigned size, Work work) {
#ifdef __linux__
  mallopt(M_MMAP_THRESHOLD, 1 << 28);  // new pages from the system cost more than the work
  mallopt(M_TRIM_THRESHOLD, 1 << 28);
#endif
  const auto time_of = [&](unsigned n) {
    const std::clock_t start = std::clock();
    work(n);
    return static_cast<double>(std::clock() - start + 1);
  };
  double large = time_of(32 * size), small = time_of(size);
  for (int attempt = 0; attempt < 3 && large > most_growth / 2 * small; ++attempt) {
    small = std::min(small, time_of(size));
    large = std::min(large, time_of(32 * size));
  }
  return large / small;
}

}  // namespace tornby::testing
