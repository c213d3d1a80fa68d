#include "base/kernel.h"

namespace tornby {

Features available_features() {
  Features features = no_features;
#ifdef TORNBY_X86_KERNELS
  __builtin_cpu_init();  // other initialisation may come here before the compiler's own
  const auto add = [&features](Features feature, bool there) { features |= there ? feature : no_features; };
  add(byte_shuffle, __builtin_cpu_supports("ssse3"));
  add(carryless_multiplication, __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1"));
  add(newer_encoding, __builtin_cpu_supports("avx"));
  add(wide_vectors, __builtin_cpu_supports("avx2"));
  add(wide_carryless, __builtin_cpu_supports("vpclmulqdq"));
  add(wide_tables, __builtin_cpu_supports("avx512vbmi"));
  add(widest_vectors,
      __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl"));
#endif
  return features;
}

}  // namespace tornby
