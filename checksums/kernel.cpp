#include "checksums/kernel.h"

namespace tornby {

Features available_features() {
  Features features = no_features;
#ifdef TORNBY_X86_KERNELS
  if (__builtin_cpu_supports("sse2")) features |= vectors;
  if (__builtin_cpu_supports("ssse3")) features |= byte_shuffle;
  if (__builtin_cpu_supports("pclmul")) features |= carryless_multiplication;
#endif
  return features;
}

}  // namespace tornby
