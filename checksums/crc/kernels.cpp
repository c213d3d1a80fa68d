#include "checksums/crc/kernels.h"

namespace tornby::crc {
namespace {

constexpr Crc16Kernel crc16_list[] = {
    {"sliced", no_features, update_crc16_sliced},
    {"bytewise", no_features, update_crc16_bytewise},
};
constexpr Crc32Kernel crc32_list[] = {
#ifdef TORNBY_X86_KERNELS
    {"carryless", carryless_multiplication, update_crc32_carryless},
#endif
    {"sliced", no_features, update_crc32_sliced},
    {"bytewise", no_features, update_crc32_bytewise},
};

}  // namespace

std::span<const Crc16Kernel> crc16_kernels() {
  return crc16_list;
}
std::span<const Crc32Kernel> crc32_kernels() {
  return crc32_list;
}

std::uint16_t update_crc16(std::uint16_t value, const std::uint8_t* data, std::size_t size) {
  static const auto chosen = resolve(crc16_kernels(), available_features()).update;
  return chosen(value, data, size);
}

std::uint32_t update_crc32(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  static const auto chosen = resolve(crc32_kernels(), available_features()).update;
  return chosen(value, data, size);
}

}  // namespace tornby::crc
