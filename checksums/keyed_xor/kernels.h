// A block XORed with a key that repeats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/kernel.h"

namespace tornby::keyed_xor {

/// XORs `size` bytes from one place to another, which may be the same but does not overlap it otherwise: byte i meets
/// key byte (`phase` + i) mod `key_size`. The key has at least one byte and overlaps neither place; `phase` is below
/// `key_size`. Any length is allowed, 0 included, at any alignment, and nothing outside the blocks is read or written.
using Apply = void (*)(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key,
                       std::size_t key_size, std::size_t phase);

struct Kernel {
  const char* name;
  Features needs;
  Apply apply;
};

/// All kernels; the last is the plain one.
std::span<const Kernel> kernels();

/// The best kernel for this processor.
const Kernel& best();

/// The same by the best kernel.
void apply(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key, std::size_t key_size,
           std::size_t phase);

// The plain kernel.
void apply_plain(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key,
                 std::size_t key_size, std::size_t phase);

}  // namespace tornby::keyed_xor
