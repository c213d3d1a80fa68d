#include "checksums/clsEncryptXOR.h"

#include <gtest/gtest.h>

#include "support/errors.h"

namespace tornby {
namespace {

using testing::raised_number;

clsEncryptXOR cipher_with(StringView key) {
  clsEncryptXOR cipher;
  cipher.Key(String(key));
  return cipher;
}

/// Every UTF-16 unit once, lone surrogates and NUL included.
String every_unit() {
  String text;
  for (unsigned unit = 0; unit < 0x10000; ++unit) text += static_cast<char16_t>(unit);
  return text;
}

TEST(clsEncryptXOR, NewObjectHasTheDefaultKey) {
  clsEncryptXOR cipher;
  EXPECT_EQ(cipher.Key(), u"tamblerk");
  EXPECT_EQ(cipher.HexEncrypt(String(9, u'\0')), u"740061006D0062006C00650072006B007400");
  cipher.Key(u"other");
  EXPECT_EQ(cipher.Key(), u"other");
}

TEST(clsEncryptXOR, WorksOnTheStoredBytesLowByteFirst) {
  EXPECT_EQ(cipher_with(u"k").HexEncrypt(u"A"), u"2A00");
  const char16_t text[] = {0xFFFF, 0x0000, 0x20AC};
  EXPECT_EQ(cipher_with(u"\u0102\u0304").HexEncrypt(StringView(text, 3)), u"FDFE0403AE21");
}

TEST(clsEncryptXOR, GivesEveryTextBack) {
  const String text = every_unit();
  for (const StringView key : {u"k", u"tamblerk", u"\u0001\U0001F511\u00E9"}) {
    const clsEncryptXOR cipher = cipher_with(key);
    const String enciphered = cipher.Encrypt(text);
    EXPECT_NE(enciphered, text);
    EXPECT_EQ(cipher.Decrypt(text), enciphered);
    EXPECT_EQ(cipher.Decrypt(enciphered), text);
    const String digits = cipher.HexEncrypt(text);
    EXPECT_EQ(digits.size(), 4 * text.size());
    EXPECT_EQ(digits.find_first_not_of(u"0123456789ABCDEF"), String::npos);
    EXPECT_EQ(cipher.HexDecrypt(digits), text);
  }
}

TEST(clsEncryptXOR, EmptyKeyMakesEverythingEmpty) {
  const clsEncryptXOR cipher = cipher_with(u"");
  EXPECT_EQ(cipher.Encrypt(u"text"), u"");
  EXPECT_EQ(cipher.Decrypt(u"text"), u"");
  EXPECT_EQ(cipher.HexEncrypt(u"text"), u"");
  EXPECT_EQ(cipher.HexDecrypt(u"2A00"), u"");
  EXPECT_EQ(cipher.HexDecrypt(u"no digits"), u"");
}

TEST(clsEncryptXOR, ReadsDigitsAsTheyComeFromAFile) {
  const clsEncryptXOR cipher = cipher_with(u"k");
  const struct {
    StringView digits, text;
  } cases[] = {
      {u"", u""},
      {u"2A002900", u"AB"},
      {u"2a002900\r\n", u"AB"},
      {u" 2A 00\t2 900 ", u"AB"},
      {u"2A00290", u"AB"},  // the last digit has no partner
      {u"2A0029", u"AB"},   // the last high byte is missing
      {u"2A00297F", u"A\u7F42"},
      {u"2A\r\n", u"A"},
      {u"2", u""},
  };
  for (const auto& [digits, text] : cases) EXPECT_EQ(cipher.HexDecrypt(digits), text) << digits.size();

  // Longer than any block inside, and broken at an odd place.
  const String text = every_unit();
  String digits = cipher.HexEncrypt(text);
  for (std::size_t at = digits.size(); at > 77; at -= 77) digits.insert(at, u"\r\n");
  EXPECT_EQ(cipher.HexDecrypt(digits), text);
}

TEST(clsEncryptXOR, RefusesAnythingButDigits) {
  const clsEncryptXOR cipher;
  for (const StringView digits : {u"G0", u"0G", u"2A0-", u"&H2A", u"2A0\u00E9", u"2\uFF11", u"2A00Z", u"Z"})
    EXPECT_EQ(raised_number([&] { cipher.HexDecrypt(digits); }), 13);
  EXPECT_EQ(raised_number([&] { cipher.HexDecrypt(StringView(u"2A\0", 3)); }), 13);
}

}  // namespace
}  // namespace tornby
