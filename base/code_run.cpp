#include "base/code_run.h"

namespace tornby {
#define TORNBY_VARIANT(name)                                                                            \
  namespace name {                                                                                      \
  std::size_t narrow(const char16_t* units, std::size_t size, std::uint8_t* codes, const CodeRun& run); \
  std::size_t widen(const std::uint8_t* codes, std::size_t size, char16_t* units, const CodeRun& run);  \
  void widen_bytes(const std::uint8_t* bytes, std::size_t size, char16_t* units);                       \
  }
TORNBY_VARIANT(plain)
TORNBY_VARIANT(avx)
TORNBY_VARIANT(avx2)

namespace {

constexpr CodeRunKernel list[] = {
#ifdef TORNBY_X86_KERNELS
    {"avx2", wide_vectors, avx2::narrow, avx2::widen, avx2::widen_bytes},
    {"avx", newer_encoding, avx::narrow, avx::widen, avx::widen_bytes},
#endif
    {"plain", no_features, plain::narrow, plain::widen, plain::widen_bytes},
};
constinit Chosen<CodeRunKernel> chosen(list);
[[maybe_unused]] const bool has_choice = chosen.choose(list);

}  // namespace

std::span<const CodeRunKernel> code_run_kernels() {
  return list;
}
const CodeRunKernel& code_runs() {
  return *chosen;
}

}  // namespace tornby
