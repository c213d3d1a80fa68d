// Text that needs no table to become bytes: ASCII and the letters of one script.
//
// Nearly every text of a code page consists of ASCII, which the code pages share, and of characters that the code page
// has in the order of Unicode: Latin letters in 1252, Cyrillic ones in 1251, Greek ones in 1253. Both go by vectors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/kernel.h"
#include "base/text.h"

namespace tornby {

/// The characters from `first` on, `length` of them, have the codes from `code` on, all of them above 127. Without a
/// length there is ASCII alone.
struct CodeRun {
  char16_t first = 0;
  std::uint8_t code = 0;
  std::uint16_t length = 0;
};

struct CodeRunKernel {
  const char* name;
  Features needs;

  /// Writes the codes of `size` units, as far as they are ASCII or of the run, and returns how many it wrote for good:
  /// all, or some that end less than `code_run_stride` before a unit that is neither. Up to `size` codes of no meaning
  /// may follow them.
  std::size_t (*narrow)(const char16_t* units, std::size_t size, std::uint8_t* codes, const CodeRun& run);

  /// The way back, under the same terms.
  std::size_t (*widen)(const std::uint8_t* codes, std::size_t size, char16_t* units, const CodeRun& run);

  /// Writes a unit for each of `size` bytes, whose value is the byte.
  void (*widen_bytes)(const std::uint8_t* bytes, std::size_t size, char16_t* units);
};
inline constexpr std::size_t code_run_stride = 64;

/// All kernels; the last is the plain one.
std::span<const CodeRunKernel> code_run_kernels();

/// The best kernel for this processor.
const CodeRunKernel& code_runs();

/// Writes one unit a byte, whose value is the byte.
inline void widen_bytes(ByteView bytes, char16_t* units) {
  code_runs().widen_bytes(bytes.data(), bytes.size(), units);
}

/// Writes one byte a unit where all are ASCII. Otherwise returns false, and what is written is of no meaning.
inline bool narrow_ascii(StringView text, std::uint8_t* bytes) {
  return code_runs().narrow(text.data(), text.size(), bytes, {}) == text.size();
}

}  // namespace tornby
