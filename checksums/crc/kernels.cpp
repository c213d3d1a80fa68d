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
constinit Chosen<Crc16Kernel> chosen_crc16(crc16_list);
constinit Chosen<Crc32Kernel> chosen_crc32(crc32_list);
[[maybe_unused]] const bool has_choice = chosen_crc16.choose(crc16_list) && chosen_crc32.choose(crc32_list);

}  // namespace

std::span<const Crc16Kernel> crc16_kernels() {
  return crc16_list;
}
std::span<const Crc32Kernel> crc32_kernels() {
  return crc32_list;
}

std::uint16_t update_crc16(std::uint16_t value, const std::uint8_t* data, std::size_t size) {
  return chosen_crc16->update(value, data, size);
}

std::uint32_t update_crc32(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  return chosen_crc32->update(value, data, size);
}

}  // namespace tornby::crc
