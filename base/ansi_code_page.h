// The ANSI code page: the one place where wide text becomes bytes and bytes become wide text.
#pragma once

#include <algorithm>
#include <array>
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

  /// Writes one byte a unit: its code, if the code page has this very character in one byte; or else its value, if that
  /// is below 256; or else the code of "?". ASCII is itself in any case.
  virtual void encode_each(StringView text, std::uint8_t* out) const;

  /// Hands the bytes of `text` to `take` in blocks of at most `block_size`, which lie in one place that is used again
  /// and again: text of any length becomes bytes without a copy of the whole.
  template <class Take>
  void encode_by_blocks(StringView text, Take take) const {
    std::array<std::uint8_t, block_size> block;
    const std::size_t units = block.size() / bytes_per_unit();
    while (!text.empty()) {
      std::size_t length = std::min(units, text.size());
      if (length < text.size() && is_high_surrogate(text[length - 1])) --length;  // a pair stays together
      take(ByteView(block.data(), encode(text.substr(0, length), block.data())));
      text.remove_prefix(length);
    }
  }
  static constexpr std::size_t block_size = 4096;

  Bytes encode(StringView text) const;
  String decode(ByteView bytes) const;

 private:
  static bool is_high_surrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
};

}  // namespace tornby
