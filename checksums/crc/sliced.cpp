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

/// Four, eight or sixteen bytes, the register folded into the first of them.
template <std::size_t size, class Register>
inline Register step(const Tables<Register>& tables, const std::uint8_t* data, std::uint32_t folded) {
  auto value = look_up(tables, size - 1, load(data) ^ folded);
  for (std::size_t i = 4; i < size; i += 4) value ^= look_up(tables, size - 1 - i, load(data + i));
  return value;
}

template <class Register, class Fold, class Bytewise>
inline Register update(const Tables<Register>& tables, Register value, const std::uint8_t* data, std::size_t size,
                       Fold fold, Bytewise bytewise) {
  for (; size >= slices; data += slices, size -= slices) value = step<slices>(tables, data, fold(value));
  if (size >= 8) {
    value = step<8>(tables, data, fold(value));
    data += 8;
    size -= 8;
  }
  if (size >= 4) {
    value = step<4>(tables, data, fold(value));
    data += 4;
    size -= 4;
  }
  for (; size != 0; --size) value = bytewise(value, *data++);
  return value;
}

}  // namespace

std::uint16_t update_crc16_sliced(std::uint16_t value, const std::uint8_t* data, std::size_t size) {
  const auto in_byte_order = [](std::uint32_t folded) { return folded >> 8 | (folded & 0xFF) << 8; };
  return update(crc16_tables, value, data, size, in_byte_order, step_crc16);
}

std::uint32_t update_crc32_sliced(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  const auto in_byte_order = [](std::uint32_t folded) { return folded; };
  return update(crc32_tables, value, data, size, in_byte_order, step_crc32);
}

}  // namespace tornby::crc
