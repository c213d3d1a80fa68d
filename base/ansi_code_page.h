// The ANSI code page: the one place where wide text becomes bytes and bytes become wide text.
#pragma once

#include <cstddef>
#include <cstdint>

#include <tornby/base/text.h>

namespace tornby {

/// An ANSI code page. A character that the code page lacks becomes the code of its best substitute, mostly that of "?".
class AnsiCodePage {
 public:
  virtual ~AnsiCodePage() = default;

  /// The code page's number, such as 1252.
  virtual unsigned identifier() const = 0;

  /// The most bytes that one UTF-16 unit becomes; 1 for a single-byte code page, where it is also the least.
  virtual std::size_t bytes_per_unit() const = 0;

  /// Writes the bytes of `text` to `out`, which has room for `text.size() * bytes_per_unit()` of them, and returns
  /// how many were written.
  virtual std::size_t encode(StringView text, std::uint8_t* out) const = 0;

  /// Writes the characters of `bytes` to `out`, which has room for `bytes.size()` of them, and returns how many were
  /// written.
  virtual std::size_t decode(ByteView bytes, char16_t* out) const = 0;

  /// The code of one character: 0 to 255, or lead byte * 256 + trail byte where the code page needs two bytes.
  virtual unsigned code_of(char16_t character) const = 0;

  Bytes encode(StringView text) const;
  String decode(ByteView bytes) const;
};

}  // namespace tornby
