// CRC checksums of strings, byte blocks and whole files.
//
// | No. | Standard                                   | Polynomial | After Clear | Reflected | Final XOR  | Check      |
// |-----|--------------------------------------------|------------|-------------|-----------|------------|------------|
// | 0   | CRC-16/XMODEM (ITU-T V.41, MSB first)      | 0x1021     | 0           | no        | none       | 0x31C3     |
// | 1   | CRC-32 of IEEE 802.3, as in zlib and PKZIP | 0x04C11DB7 | 0xFFFFFFFF  | yes       | 0xFFFFFFFF | 0xCBF43926 |
//
// No. is the value of Algorithm, Check the checksum of "123456789".
//
// Results are signed 32-bit integers: the CRC-32 0xCBF43926 is delivered as -873187034.
//
// Text is checksummed as its bytes in the ANSI code page, one byte a character where the code page has one.
//
// A 32-bit process on 64-bit Windows gets other results from CalculateString and CalculateFile than any other
// process; both members say which. AddString and Value are the same everywhere.
#pragma once

#include <cstdint>

#include <tornby/base/ansi_code_page.h>
#include <tornby/base/text.h>
#include <tornby/base/variant.h>
#include <tornby/platform/code_page.h>
#include <tornby/platform/files.h>
#include <tornby/platform/process.h>

namespace tornby {

class clsCRC {
 public:
  /// A new object has CRC-32 selected and both registers cleared.
  explicit clsCRC(const AnsiCodePage& code_page = native_code_page(), const Files& files = native_files(),
                  const Process& process = native_process());

  /// Runs the CRC-32 update over the characters of `text`, from the register value given, and returns the new register.
  /// The register is neither set up nor inverted: pass -1 and invert the result to get the standard CRC-32.
  /// The object's own registers are not involved.
  /// Raises 9 (subscript out of range) for a character that takes two bytes in the ANSI code page.
  std::int32_t WIN64_AddCrc32(StringView text, std::int32_t crc) const;

  /// Takes `text` into the running checksum of the selected algorithm and returns the new Value. Under an algorithm
  /// other than 0 and 1 nothing happens and the result is empty.
  /// Raises 9 (subscript out of range) for an empty text.
  Variant AddString(StringView text);

  /// The selected algorithm: 0 is CRC-16, 1 is CRC-32. Any other number is stored but selects nothing.
  /// Writing it clears both registers, also when the number stays the same.
  std::int32_t Algorithm() const { return algorithm_; }
  void Algorithm(std::int32_t value);

  /// The standard CRC-32 of a whole file, as a 32-bit integer, whatever Algorithm says; the registers stay as they are.
  /// The process must have room for the file's content in one piece, though little of that room is used.
  /// Empty for a file of length 0, and always in a 32-bit process on 64-bit Windows, where nothing is computed.
  /// The 16-bit integer -1 when anything fails: no such file, a folder, no permission, too large for the process (2 GiB
  /// and more in 32 bits). A failure after the file was opened leaves it open until the process ends.
  Variant CalculateFile(StringView file_name) const;

  /// The checksum of `text` alone by the selected algorithm. Clears the registers first and leaves Value at the result.
  /// Raises 9 (subscript out of range) for an empty text.
  /// In a 32-bit process on 64-bit Windows the result is instead a CRC-32 whose register starts at 0 rather than
  /// 0xFFFFFFFF ("123456789" gives 0xD202D277, that is -771566985), whatever Algorithm says; the registers stay as they
  /// are, and an empty text gives -1.
  Variant CalculateString(StringView text);

  /// The running checksum: the CRC-16 as 0 to 65535, the CRC-32 as a signed 32-bit integer, empty under any other
  /// algorithm.
  /// Writing sets the register itself. A CRC-32 register is the bitwise NOT of its checksum, so what is written reads
  /// back inverted, and a CRC-32 is continued from an earlier result R by writing NOT R; a CRC-16 reads back as
  /// written. Raises 13 (type mismatch) or 6 (overflow) for a value that is no 32-bit integer; under an algorithm other
  /// than 0 and 1 a valid value is ignored.
  Variant Value() const;
  void Value(const Variant& value);

  /// Sets both registers to their start, whatever the algorithm: 0 for CRC-16, -1 (0xFFFFFFFF) for CRC-32.
  void Clear();

 private:
  void add_bytes(ByteView bytes);

  const AnsiCodePage* code_page_;
  const Files* files_;
  const Process* process_;
  std::int32_t algorithm_ = 1;
  std::int32_t crc16_ = 0;   // only the low 16 bits count
  std::int32_t crc32_ = -1;  // not inverted
};

}  // namespace tornby
