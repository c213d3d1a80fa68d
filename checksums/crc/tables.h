// The lookup tables, computed by the compiler.
//
// Table k gives the effect of a byte that k further zero bytes follow, so that slice k of a block can be looked up
// without waiting for the bytes before it. Table 0 is the classic one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tornby::crc {

inline constexpr std::size_t slices = 16;

template <class Register>
using Tables = std::array<std::array<Register, 256>, slices>;

/// CRC-16/XMODEM: polynomial 0x1021, most significant bit first.
constexpr Tables<std::uint16_t> make_crc16_tables() {
  Tables<std::uint16_t> tables{};
  for (unsigned i = 0; i < 256; ++i) {
    unsigned value = i << 8;
    for (int bit = 0; bit < 8; ++bit) value = (value & 0x8000) != 0 ? value << 1 ^ 0x1021 : value << 1;
    tables[0][i] = static_cast<std::uint16_t>(value);
  }
  for (std::size_t k = 1; k < slices; ++k)
    for (std::size_t i = 0; i < 256; ++i) {
      const unsigned before = tables[k - 1][i];
      tables[k][i] = static_cast<std::uint16_t>(before << 8 ^ tables[0][before >> 8]);
    }
  return tables;
}

/// CRC-32 of IEEE 802.3: polynomial 0x04C11DB7, least significant bit first (reflected form 0xEDB88320).
constexpr Tables<std::uint32_t> make_crc32_tables() {
  Tables<std::uint32_t> tables{};
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) value = (value & 1) != 0 ? value >> 1 ^ 0xEDB88320u : value >> 1;
    tables[0][i] = value;
  }
  for (std::size_t k = 1; k < slices; ++k)
    for (std::size_t i = 0; i < 256; ++i) {
      const std::uint32_t before = tables[k - 1][i];
      tables[k][i] = before >> 8 ^ tables[0][before & 0xFF];
    }
  return tables;
}

alignas(64) inline constexpr Tables<std::uint16_t> crc16_tables = make_crc16_tables();
alignas(64) inline constexpr Tables<std::uint32_t> crc32_tables = make_crc32_tables();

/// One step of the CRC-16 register over a byte.
constexpr std::uint16_t step_crc16(std::uint16_t value, unsigned byte) {
  return static_cast<std::uint16_t>(value << 8 ^ crc16_tables[0][(value >> 8 ^ byte) & 0xFF]);
}

/// One step of the CRC-32 register over a byte.
constexpr std::uint32_t step_crc32(std::uint32_t value, unsigned byte) {
  return value >> 8 ^ crc32_tables[0][(value ^ byte) & 0xFF];
}

}  // namespace tornby::crc
