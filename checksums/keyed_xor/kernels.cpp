#include "checksums/keyed_xor/kernels.h"

namespace tornby::keyed_xor {
#define TORNBY_VARIANT(name)                                                                        \
  namespace name {                                                                                  \
  void apply(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key, \
             std::size_t key_size, std::size_t phase);                                              \
  }
TORNBY_VARIANT(avx2)
TORNBY_VARIANT(avx)
TORNBY_VARIANT(ssse3)

namespace {

constexpr Kernel list[] = {
#ifdef TORNBY_X86_KERNELS
    {"256 bits", wide_vectors, avx2::apply},
    {"128 bits", newer_encoding, avx::apply},
    {"128 bits, older encoding", byte_shuffle, ssse3::apply},
#endif
    {"plain", no_features, apply_plain},
};
constinit Chosen<Kernel> chosen(list);
[[maybe_unused]] const bool has_choice = chosen.choose(list);

}  // namespace

std::span<const Kernel> kernels() {
  return list;
}
const Kernel& best() {
  return *chosen;
}

void apply(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key, std::size_t key_size,
           std::size_t phase) {
  chosen->apply(from, to, size, key, key_size, phase);
}

}  // namespace tornby::keyed_xor
