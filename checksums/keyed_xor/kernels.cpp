#include "checksums/keyed_xor/kernels.h"

namespace tornby::keyed_xor {
namespace {

constexpr Kernel list[] = {
#ifdef TORNBY_X86_KERNELS
    {"repeated", byte_shuffle, apply_repeated},
#endif
    {"plain", no_features, apply_plain},
};
constinit Chosen<Kernel> chosen(list);
[[maybe_unused]] const bool has_choice = chosen.choose(list);

}  // namespace

std::span<const Kernel> kernels() {
  return list;
}

void apply(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key, std::size_t key_size,
           std::size_t phase) {
  chosen->apply(from, to, size, key, key_size, phase);
}

}  // namespace tornby::keyed_xor
