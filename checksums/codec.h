// Bytes to digits and back, in whole groups: the contract of the hexadecimal and the Base64 kernels.
//
// A group is a fixed number of bytes and of the ASCII digits that stand for them, which are bytes or units of UTF-16;
// `hex/kernels.h` and `base64/kernels.h` say how many. Any number of groups is allowed, 0 included, at any alignment;
// nothing outside the blocks is read or written, and the blocks do not overlap.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/kernel.h"

namespace tornby {

struct Codec {
  const char* name;
  Features needs;

  /// Writes the digits of `groups` groups of bytes.
  void (*encode)(const std::uint8_t* bytes, std::size_t groups, std::uint8_t* digits);
  void (*encode_units)(const std::uint8_t* bytes, std::size_t groups, char16_t* digits);

  /// Reads `groups` groups of digits. Returns `groups`, or the index of the first group with anything but digits;
  /// what is written from that group on is then of no meaning.
  std::size_t (*decode)(const std::uint8_t* digits, std::size_t groups, std::uint8_t* bytes);
  std::size_t (*decode_units)(const char16_t* digits, std::size_t groups, std::uint8_t* bytes);
};

}  // namespace tornby
