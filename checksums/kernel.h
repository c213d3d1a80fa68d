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
inline constexpr Features vectors = 1;                   // SSE2
inline constexpr Features byte_shuffle = 2;              // SSSE3
inline constexpr Features carryless_multiplication = 4;  // PCLMULQDQ, with SSE2

// The vector kernels stand in files of their own, compiled for the instructions that they need, the whole of each: then
// the compiler aligns the stack, which 32-bit callers may hold on a boundary of four bytes. Such a file uses no
// templates or inline functions of others, which would carry those instructions elsewhere.

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
