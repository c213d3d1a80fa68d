// Base64 (RFC 4648, section 4): three bytes are four digits. Padding is the business of the caller.
#pragma once

#include <span>

#include "checksums/codec.h"

namespace tornby::base64 {

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

}  // namespace tornby::base64
