#include "checksums/keyed_xor/kernels.h"

namespace tornby::keyed_xor {
namespace {

constexpr Kernel list[] = {
#ifdef TORNBY_X86_KERNELS
    {"repeated", vectors, apply_repeated},
#endif
    {"plain", no_features, apply_plain},
};

}  // namespace

std::span<const Kernel> kernels() {
  return list;
}

void apply(std::uint8_t* data, std::size_t size, const std::uint8_t* key, std::size_t key_size, std::size_t phase) {
  static const Apply chosen = resolve(kernels(), available_features()).apply;
  chosen(data, size, key, key_size, phase);
}

}  // namespace tornby::keyed_xor
