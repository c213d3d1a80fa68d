// How a kernel is chosen among several that keep one contract.
//
// A kernel is a function, or a few that belong together, over bytes. Those of one contract stand in a list, the fastest
// first and the plain one, which runs anywhere, last. A list's entry has a name for the tests, the processor features
// that it needs, and the functions.
#pragma once

#include <span>

namespace tornby {

/// What a kernel may ask of the processor, as bits. The portable kernels ask for nothing.
using Features = unsigned;
inline constexpr Features no_features = 0;
inline constexpr Features byte_shuffle = 1;              // SSSE3
inline constexpr Features carryless_multiplication = 2;  // PCLMULQDQ, with SSE4.1
inline constexpr Features newer_encoding = 4;            // AVX: 128 bits
inline constexpr Features wide_vectors = 8;              // AVX2: 256 bits
inline constexpr Features wide_carryless = 16;           // VPCLMULQDQ
inline constexpr Features widest_vectors = 32;           // AVX-512 F, BW and VL: 512 bits
inline constexpr Features wide_tables = 64;              // AVX-512 VBMI

// The vector kernels stand in files of their own, compiled for the instructions that they need, the whole of each: then
// the compiler aligns the stack, which 32-bit callers may hold on a boundary of four bytes. Such a file uses no
// templates or inline functions of others, which would carry those instructions elsewhere.
//
// A 128-bit kernel is there twice where wider ones are as well: after 256-bit code, that of other libraries included,
// processors run instructions in the older encoding at half the speed, and under Wine they do so for good.

/// The features of the processor that this process runs on.
Features available_features();

/// The first of `kernels` whose needs lie within `features`.
template <class Kernel>
const Kernel& resolve(std::span<const Kernel> kernels, Features features) {
  for (const Kernel& kernel : kernels)
    if ((kernel.needs & ~features) == 0) return kernel;
  return kernels.back();
}

/// The kernel of a list that suits this processor best. It is chosen when the library is loaded; whoever calls even
/// earlier gets the plain one.
template <class Kernel>
class Chosen {
 public:
  constexpr explicit Chosen(std::span<const Kernel> kernels) : kernel_(kernels.back()) {}

  /// Returns whether there is a choice, so that a constant's initialisation can make it.
  bool choose(std::span<const Kernel> kernels) {
    kernel_ = resolve(kernels, available_features());
    return kernels.size() > 1;
  }
  const Kernel* operator->() const { return &kernel_; }
  const Kernel& operator*() const { return kernel_; }

 private:
  Kernel kernel_;
};

}  // namespace tornby
