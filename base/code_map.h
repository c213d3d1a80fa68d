// Text to codes and back by vectors.
//
// Nearly every text of a code page consists of ASCII, which the code pages share, and of characters that the code page
// has in the order of Unicode: Latin letters in 1252, Cyrillic ones in 1251, Greek ones in 1253. Both are ranges, which
// any vectors can shift. Processors with tables of 128 bytes in registers look up the other characters as well.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/kernel.h"
#include "base/text.h"

namespace tornby {

/// The characters of the 256 codes; and the code that each of the 65,536 units becomes.
using Characters = std::array<char16_t, 256>;
using UnitCodes = std::vector<std::uint8_t>;

/// The characters from `first` on, `length` of them, have the codes from `code` on, all of them above 127.
struct CodeRun {
  char16_t first = 0;
  std::uint8_t code = 0;
  std::uint16_t length = 0;
};

/// The codes of units beyond ASCII.
struct CodeMap {
  /// A run of the characters, made longer as far as the codes go on with it.
  CodeRun run;

  /// A unit's place is its lower byte, moved on by the shift of its upper byte modulo 64. Its code is the one that
  /// stands there, if that is above 127 and belongs to a character with this upper byte.
  alignas(64) std::uint8_t shift[64] = {};
  std::uint8_t code_at[256] = {};
  std::uint8_t upper[128];  // the upper bytes of the characters, from code 128 on

  CodeMap(const Characters& characters, const UnitCodes& codes, const CodeRun& some_run);
};

/// The characters of codes beyond ASCII.
struct CharacterMap {
  CodeRun run;
  alignas(64) std::uint8_t lower[128], upper[128];  // the bytes of each, from code 128 on

  CharacterMap(const Characters& characters, const CodeRun& some_run);
};

struct CodeMapKernel {
  const char* name;
  Features needs;

  /// Writes the codes of `size` units, as far as they are ASCII or, given a map, of its run, and returns how many it
  /// wrote for good: all, or some that end less than `code_stride` before a unit that is neither. Some kernels go on as
  /// far as the map has the units' places. Up to `size` codes of no meaning may follow.
  std::size_t (*narrow)(const char16_t* units, std::size_t size, std::uint8_t* codes, const CodeMap* map);

  /// The way back, under the same terms.
  std::size_t (*widen)(const std::uint8_t* codes, std::size_t size, char16_t* units, const CharacterMap& map);

  /// Writes a unit for each of `size` bytes, whose value is the byte.
  void (*widen_bytes)(const std::uint8_t* bytes, std::size_t size, char16_t* units);
};
inline constexpr std::size_t code_stride = 64;

/// All kernels; the last is the plain one.
std::span<const CodeMapKernel> code_map_kernels();

/// The best kernel for this processor.
extern constinit Chosen<CodeMapKernel> chosen_code_map;
inline const CodeMapKernel& code_maps() {
  return *chosen_code_map;
}

/// Writes one unit a byte, whose value is the byte.
inline void widen_bytes(ByteView bytes, char16_t* units) {
  code_maps().widen_bytes(bytes.data(), bytes.size(), units);
}

/// Writes one byte a unit where all are ASCII. Otherwise returns false, and what is written is of no meaning.
inline bool narrow_ascii(StringView text, std::uint8_t* bytes) {
  return code_maps().narrow(text.data(), text.size(), bytes, nullptr) == text.size();
}

}  // namespace tornby
