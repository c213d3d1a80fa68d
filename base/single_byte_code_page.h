// Code pages of one byte a character, by table.
#pragma once

#include <utility>

#include "base/ansi_code_page.h"
#include "base/code_map.h"

namespace tornby {

class SingleByteCodePage final : public AnsiCodePage {
 public:
  /// `characters` are those of the 256 codes; `codes` holds the code of each of the 65,536 UTF-16 units.
  SingleByteCodePage(unsigned identifier, const Characters& characters, UnitCodes codes);

  /// The same with `codes` derived: the inverse of `characters`, and "?" for every unit that is not among them.
  SingleByteCodePage(unsigned identifier, const Characters& characters);

  using AnsiCodePage::decode;
  using AnsiCodePage::encode;
  unsigned identifier() const override { return identifier_; }
  std::size_t bytes_per_unit() const override { return 1; }
  std::size_t encode(StringView text, std::uint8_t* out) const override;
  std::size_t decode(ByteView bytes, char16_t* out) const override;
  unsigned code_of(char16_t character) const override { return codes_.of[character]; }
  void encode_each(StringView text, std::uint8_t* out) const override;

 private:
  /// What every unit becomes, and what of that goes by vectors.
  struct Codes {
    Codes(const Characters& characters, UnitCodes codes, const CodeRun& run)
        : of(std::move(codes)), map(characters, of, run) {}
    UnitCodes of;
    CodeMap map;
  };
  void encode_by(const Codes& codes, StringView text, std::uint8_t* out) const;

  unsigned identifier_;
  Characters characters_;
  CharacterMap map_;
  Codes codes_;
  Codes each_codes_;
  bool ascii_is_itself_ = true;
};

/// Windows-1252 (Western European). The five codes that the code page leaves open, 0x81, 0x8D, 0x8F, 0x90 and 0x9D,
/// stand for the control characters of the same numbers, as Windows has them, so that every byte survives.
const SingleByteCodePage& windows_1252();

}  // namespace tornby
