// The block updates of both checksums: one contract, several kernels, one resolver.
//
// A kernel takes the running register and a block of bytes and returns the new register. It neither sets the register
// up nor inverts it. Any length is allowed, 0 included, at any alignment, and no byte outside the block is read.
//
// The method is Sarwate's table walk ("Computation of cyclic redundancy checks via table look-up", CACM 31(8), 1988)
// and, for the fast kernels, its extension to several bytes a step (Kounavis and Berry, "Novel table lookup-based
// algorithms for high-performance CRC generation", IEEE Transactions on Computers 57(11), 2008). Processors that
// multiply without carries fold long blocks (Gopal et al., "Fast CRC computation for generic polynomials using
// PCLMULQDQ instruction", Intel white paper 323102, 2009), four vectors at once, each as wide as the processor has
// them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/kernel.h"

namespace tornby::crc {

struct Kernel {
  const char* name;
  Features needs;
  std::uint16_t (*update_crc16)(std::uint16_t value, const std::uint8_t* data, std::size_t size);
  std::uint32_t (*update_crc32)(std::uint32_t value, const std::uint8_t* data, std::size_t size);
};

/// All kernels, the fastest first; the last is the plain table walk, which every other one is tested against.
std::span<const Kernel> kernels();

// The kernels of the tables.
std::uint16_t update_crc16_bytewise(std::uint16_t value, const std::uint8_t* data, std::size_t size);
std::uint16_t update_crc16_sliced(std::uint16_t value, const std::uint8_t* data, std::size_t size);
std::uint32_t update_crc32_bytewise(std::uint32_t value, const std::uint8_t* data, std::size_t size);
std::uint32_t update_crc32_sliced(std::uint32_t value, const std::uint8_t* data, std::size_t size);

/// Shorter blocks do best with the tables.
inline constexpr std::size_t least_for_vectors = 16;

extern constinit Chosen<Kernel> best;

/// The update by the best kernel for this processor.
inline std::uint16_t update_crc16(std::uint16_t value, const std::uint8_t* data, std::size_t size) {
  return size < least_for_vectors ? update_crc16_sliced(value, data, size) : best->update_crc16(value, data, size);
}
inline std::uint32_t update_crc32(std::uint32_t value, const std::uint8_t* data, std::size_t size) {
  return size < least_for_vectors ? update_crc32_sliced(value, data, size) : best->update_crc32(value, data, size);
}

}  // namespace tornby::crc
