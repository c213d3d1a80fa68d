// Text made fit for transport as plain ASCII, and back: a repeating-key XOR wrapped in Base64; and the Base64 coder on
// its own, for bytes and for strings.
//
// Base64 here is that of RFC 4648, section 4: the alphabet A-Z a-z 0-9 + /, padded with "=", without line breaks.
// The key hides text from a glance; it protects nothing from someone who knows a piece of the text.
//
// Encrypt and Decrypt work on the characters' codes in the ANSI code page. Every text whose characters lie in it comes
// back, codes 128 to 159 included, such as the Euro sign (128 in Windows-1252); any other character comes back as its
// substitute there, mostly "?". In a code page with two-byte characters each byte counts as a character.
//
// What decoding makes of input that no encoder writes:
//
// | Input                                               | Result                                         |
// |-----------------------------------------------------|------------------------------------------------|
// | empty, or nothing but padding ("====", "========")  | empty                                          |
// | a length that is no multiple of 4                   | error "Length should be a multiple of 4."      |
// | a byte above 127, or one outside the alphabet, such | error "Illegal character."                     |
// |   as "-", "_", a blank or a line break              |                                                |
// | "=" before a digit ("AA==AAAA", "A=AA")             | error "Illegal character."                     |
// | a group of one digit ("A===", "AAAAA===")           | error "Illegal character."                     |
// | a whole group of padding behind a full group        | the padding is ignored: as "AAAA"              |
// |   ("AAAA====")                                      |                                                |
// | bits in the last digit that belong to no byte       | the bits are ignored: as "AA==" and "AAA="     |
// |   ("AB==", "AAB=")                                  |                                                |
// | two faults at once                                  | the length is checked first                    |
//
// Both errors have the number -2147221504 (0x80040000), the base of class-defined errors.
#pragma once

#include <cstdint>

#include <tornby/base/ansi_code_page.h>
#include <tornby/base/text.h>
#include <tornby/platform/code_page.h>

namespace tornby {

class clsWebEncryption {
 public:
  explicit clsWebEncryption(const AnsiCodePage& code_page = native_code_page()) : code_page_(&code_page) {}

  /// XORs the codes of the text's characters with those of the key's, which repeats from its first character, and
  /// returns the Base64 form of the outcome. The caller's `text` is changed: it is left holding the characters of the
  /// XORed codes.
  /// Raises 11 (division by zero) for an empty key, unless the text is empty as well; the text then stays as it is.
  String Encrypt(String& text, StringView key) const;

  /// The inverse of Encrypt: takes the Base64 form, returns the text, and leaves the caller's `text` holding it too.
  /// Raises the errors of the table above, and 11 (division by zero) for an empty key, unless nothing was encoded; the
  /// text then stays as it is.
  String Decrypt(String& text, StringView key) const;

  /// The bytes that a Base64 form stands for. Raises the errors of the table above.
  Bytes bsDecode(ByteView digits) const;

  /// The same for strings. The result has one character a byte, whose UTF-16 value is the byte, 0 to 255.
  String bsDecodeString(StringView text) const;

  /// The Base64 form of one byte a character: its code in the ANSI code page where it has one below 256, or its own
  /// UTF-16 value when that is below 256, or else the code of "?".
  String bsEncodeString(StringView text) const;

  /// The Base64 form of all the bytes.
  Bytes bsEncode(ByteView bytes) const;

  /// The Base64 form of the first `count` bytes; for 0 it is empty.
  /// Raises 9 (subscript out of range) for a negative count and for one that exceeds the number of bytes.
  Bytes bsEncode2(ByteView bytes, std::int32_t count) const;

 private:
  const AnsiCodePage* code_page_;
};

}  // namespace tornby
