// One byte a step.
#include "checksums/crc/kernels.h"
#include "checksums/crc/tables.h"

namespace tornby::crc {

std::uint16_t update_crc16_bytewise(std::uint16_t value, const std::uint8_t* data, std::size_t size) {
  for (const std::uint8_t* end = data + size; data != end; ++data) value = step_crc16(value, *data);
  return value;
}

std::uint32_t update_crc32_bytewise(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  for (const std::uint8_t* end = data + size; data != end; ++data) value = step_crc32(value, *data);
  return value;
}

}  // namespace tornby::crc
