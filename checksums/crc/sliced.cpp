// Sixteen bytes a step: the register is folded into the first of them, then all sixteen are looked up at once.
#include "checksums/crc/kernels.h"
#include "checksums/crc/tables.h"

namespace tornby::crc {
namespace {

/// Four bytes as a number, least significant first; compilers make one load of it where the processor allows.
inline std::uint32_t load(const std::uint8_t* p) {
  return p[0] | static_cast<std::uint32_t>(p[1]) << 8 | static_cast<std::uint32_t>(p[2]) << 16 |
         static_cast<std::uint32_t>(p[3]) << 24;
}

/// The four bytes of `word` looked up in tables `first` down to `first - 3`.
template <class Register>
inline Register look_up(const Tables<Register>& tables, std::size_t first, std::uint32_t word) {
  return static_cast<Register>(tables[first][word & 0xFF] ^ tables[first - 1][word >> 8 & 0xFF] ^
                               tables[first - 2][word >> 16 & 0xFF] ^ tables[first - 3][word >> 24]);
}

template <class Register>
inline Register look_up_16(const Tables<Register>& tables, const std::uint8_t* data, std::uint32_t folded) {
  return static_cast<Register>(look_up(tables, 11, load(data + 4)) ^ look_up(tables, 7, load(data + 8)) ^
                               look_up(tables, 3, load(data + 12)) ^ look_up(tables, 15, load(data) ^ folded));
}

}  // namespace

std::uint16_t update_crc16_sliced(std::uint16_t value, const std::uint8_t* data, std::size_t size) {
  for (; size >= slices; data += slices, size -= slices) {
    const std::uint32_t in_byte_order = static_cast<std::uint32_t>(value >> 8) | (value & 0xFFu) << 8;
    value = look_up_16(crc16_tables, data, in_byte_order);
  }
  return update_crc16_bytewise(value, data, size);
}

std::uint32_t update_crc32_sliced(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  for (; size >= slices; data += slices, size -= slices) value = look_up_16(crc32_tables, data, value);
  return update_crc32_bytewise(value, data, size);
}

}  // namespace tornby::crc
