// Hexadecimal: a byte is two digits, the high half first. Upper case is written, either case is read.
#pragma once

#include <span>

#include "checksums/codec.h"

namespace tornby::hex {

/// All kernels; the last is the plain one.
std::span<const Codec> kernels();

/// The best kernel for this processor.
extern constinit Chosen<Codec> chosen;
inline const Codec& best() {
  return *chosen;
}

// The plain kernel, for digits that are bytes or units.
template <class Digit>
void encode_plain(const std::uint8_t* bytes, std::size_t groups, Digit* digits);
template <class Digit>
std::size_t decode_plain(const Digit* digits, std::size_t groups, std::uint8_t* bytes);

}  // namespace tornby::hex
