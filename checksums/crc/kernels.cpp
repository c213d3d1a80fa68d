#include "checksums/crc/kernels.h"

namespace tornby::crc {
#define TORNBY_VARIANT(name)                                                                   \
  namespace name {                                                                             \
  std::uint16_t update_crc16(std::uint16_t value, const std::uint8_t* data, std::size_t size); \
  std::uint32_t update_crc32(std::uint32_t value, const std::uint8_t* data, std::size_t size); \
  }
TORNBY_VARIANT(folded_512)
TORNBY_VARIANT(folded_256)
TORNBY_VARIANT(folded_128)
TORNBY_VARIANT(folded_sse)

namespace {

constexpr Crc16Kernel crc16_list[] = {
#ifdef TORNBY_X86_KERNELS
    {"512 bits", widest_vectors | wide_carryless, folded_512::update_crc16},
    {"256 bits", wide_vectors | wide_carryless, folded_256::update_crc16},
    {"128 bits", newer_encoding | carryless_multiplication, folded_128::update_crc16},
    {"128 bits, older encoding", carryless_multiplication, folded_sse::update_crc16},
#endif
    {"sliced", no_features, update_crc16_sliced},
    {"bytewise", no_features, update_crc16_bytewise},
};
constexpr Crc32Kernel crc32_list[] = {
#ifdef TORNBY_X86_KERNELS
    {"512 bits", widest_vectors | wide_carryless, folded_512::update_crc32},
    {"256 bits", wide_vectors | wide_carryless, folded_256::update_crc32},
    {"128 bits", newer_encoding | carryless_multiplication, folded_128::update_crc32},
    {"128 bits, older encoding", carryless_multiplication, folded_sse::update_crc32},
#endif
    {"sliced", no_features, update_crc32_sliced},
    {"bytewise", no_features, update_crc32_bytewise},
};

}  // namespace

constinit Chosen<Crc16Kernel> best_crc16(crc16_list);
constinit Chosen<Crc32Kernel> best_crc32(crc32_list);
namespace {
[[maybe_unused]] const bool has_choice = best_crc16.choose(crc16_list) && best_crc32.choose(crc32_list);
}

std::span<const Crc16Kernel> crc16_kernels() {
  return crc16_list;
}
std::span<const Crc32Kernel> crc32_kernels() {
  return crc32_list;
}

}  // namespace tornby::crc
