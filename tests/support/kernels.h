// What the suites of the kernels share.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/kernel.h"
#include "base/text.h"

namespace tornby::testing {

/// Runs a test for each kernel that this processor has.
template <class Kernels, class Test>
void with_each(const Kernels& kernels, Test test) {
  for (const auto& kernel : kernels)
    if ((kernel.needs & ~available_features()) == 0) {
      SCOPED_TRACE(kernel.name);
      test(kernel);
    }
}

inline Bytes random_bytes(std::mt19937& random, std::size_t size) {
  Bytes bytes(size);
  std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<std::uint8_t>(random()); });
  return bytes;
}

}  // namespace tornby::testing
