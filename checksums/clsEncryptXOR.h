// A cipher that XORs text with a repeating key, delivered as text or as hexadecimal digits.
//
// The text and the key are taken as the bytes that they are stored in: two a character, the low byte first. Byte i of
// the text meets byte i mod n of the key's n bytes. So every text comes back exactly, whatever its characters are, and
// the hexadecimal form has four digits a character, in upper case: under the key "k" (6B00) the text "A" (4100) becomes
// "2A00".
//
// XOR is its own inverse: Encrypt and Decrypt are one operation, and enciphering twice gives the text back. The cipher
// hides text from a glance; it protects nothing from someone who knows a piece of the text.
//
// What Encrypt returns may hold any character, NUL and halves of surrogate pairs included. To a file it goes as
// hexadecimal digits: a file is written in the ANSI code page, which has few of those characters.
#pragma once

#include <utility>

#include <tornby/base/text.h>

namespace tornby {

class clsEncryptXOR {
 public:
  /// The key, "tamblerk" in a new object. With the empty key every method returns the empty text, whatever it is given.
  const String& Key() const { return key_; }
  void Key(String value) { key_ = std::move(value); }

  /// The text enciphered, or deciphered: the two are the same.
  String Decrypt(StringView text) const;
  String Encrypt(StringView text) const;

  /// Deciphers hexadecimal digits that HexEncrypt made. Digits are read in either case. Blanks, tabs and line breaks
  /// are passed over, so that digits read from a file need no trimming. A last digit without its partner is ignored.
  /// An odd number of bytes is half a character short: the last character's high byte is then 0.
  /// Raises 13 (type mismatch) for any other character, with a key that is not empty.
  String HexDecrypt(StringView digits) const;

  /// The text enciphered, as hexadecimal digits: four a character.
  String HexEncrypt(StringView text) const;

 private:
  String key_ = u"tamblerk";
};

}  // namespace tornby
