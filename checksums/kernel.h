// How a kernel is chosen among several that keep one contract.
//
// A kernel is a function over bytes. Those of one contract stand in a list, the fastest first and the plain one, which
// runs anywhere, last. A list's entry has a name for the tests, the processor features that it needs, and the function.
#pragma once

#include <span>

namespace tornby {

/// What a kernel may ask of the processor, as bits. The portable kernels ask for nothing.
using Features = unsigned;
inline constexpr Features no_features = 0;

/// The features of the processor that this process runs on.
Features available_features();

/// The first of `kernels` whose needs lie within `features`.
template <class Kernel>
const Kernel& resolve(std::span<const Kernel> kernels, Features features) {
  for (const Kernel& kernel : kernels)
    if ((kernel.needs & ~features) == 0) return kernel;
  return kernels.back();
}

}  // namespace tornby
