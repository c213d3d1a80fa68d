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

constexpr Kernel list[] = {
#ifdef TORNBY_X86_KERNELS
    {"512 bits", widest_vectors | wide_carryless, folded_512::update_crc16, folded_512::update_crc32},
    {"256 bits", wide_vectors | wide_carryless, folded_256::update_crc16, folded_256::update_crc32},
    {"128 bits", newer_encoding | carryless_multiplication, folded_128::update_crc16, folded_128::update_crc32},
    {"128 bits, older encoding", carryless_multiplication, folded_sse::update_crc16, folded_sse::update_crc32},
#endif
    {"sliced", no_features, update_crc16_sliced, update_crc32_sliced},
    {"bytewise", no_features, update_crc16_bytewise, update_crc32_bytewise},
};

}  // namespace

constinit Chosen<Kernel> best(list);
namespace {
[[maybe_unused]] const bool has_choice = best.choose(list);
}

std::span<const Kernel> kernels() {
  return list;
}

}  // namespace tornby::crc
