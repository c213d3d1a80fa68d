#include "checksums/clsWebEncryption.h"

#include <gtest/gtest.h>

#include <numeric>

#include "base/single_byte_code_page.h"
#include "support/errors.h"

namespace tornby {
namespace {

using testing::raised_number;

const clsWebEncryption& web() {
  static const clsWebEncryption object(windows_1252());
  return object;
}

Bytes bytes_of(std::string_view text) {
  return Bytes(text.begin(), text.end());
}

/// The characters of all 256 codes, in order.
String every_code(const AnsiCodePage& page) {
  Bytes codes(256);
  std::iota(codes.begin(), codes.end(), std::uint8_t{0});
  return page.decode(codes);
}

/// Baltic, as far as it matters here: code 0xA8 is U+00D8, and code 0xD8 is U+0172.
const AnsiCodePage& shifted_page() {
  static const SingleByteCodePage page = [] {
    Characters characters{};
    std::iota(characters.begin(), characters.end(), char16_t{0});
    characters[0xA8] = 0xD8;
    characters[0xD8] = 0x172;
    return SingleByteCodePage(1257, characters);
  }();
  return page;
}

TEST(clsWebEncryption, EncodesAsTheStandardDoes) {
  const struct {
    std::string_view bytes, digits;
  } cases[] = {
      {"", ""},
      {"f", "Zg=="},
      {"fo", "Zm8="},
      {"foo", "Zm9v"},
      {"foob", "Zm9vYg=="},
      {"fooba", "Zm9vYmE="},
      {"foobar", "Zm9vYmFy"},
      {"\xFB\xFF\xFE", "+//+"},
  };
  for (const auto& [bytes, digits] : cases) {
    EXPECT_EQ(web().bsEncode(bytes_of(bytes)), bytes_of(digits));
    EXPECT_EQ(web().bsDecode(bytes_of(digits)), bytes_of(bytes));
    const auto text = String(bytes.begin(), bytes.end());
    if (bytes.starts_with("\xFB")) continue;
    EXPECT_EQ(web().bsEncodeString(text), widen(digits));
    EXPECT_EQ(web().bsDecodeString(widen(digits)), text);
  }
}

TEST(clsWebEncryption, CountStaysInsideTheArray) {
  const Bytes bytes = bytes_of("foobar");
  EXPECT_EQ(web().bsEncode2(bytes, 0), Bytes());
  EXPECT_EQ(web().bsEncode2(bytes, 4), bytes_of("Zm9vYg=="));
  EXPECT_EQ(web().bsEncode2(bytes, 6), bytes_of("Zm9vYmFy"));
  for (const std::int32_t count : {-1, 7, INT32_MAX, INT32_MIN})
    EXPECT_EQ(raised_number([&] { web().bsEncode2(bytes, count); }), 9);
}

TEST(clsWebEncryption, MalformedInput) {
  const StringView length = u"Length should be a multiple of 4.", illegal = u"Illegal character.";
  const struct {
    std::string_view digits, bytes;
    StringView error;
  } cases[] = {
      {"====", "", u""},
      {"========", "", u""},
      {"AAAA====", std::string_view("\0\0\0", 3), u""},
      {"AB==", std::string_view("\0", 1), u""},
      {"AAB=", std::string_view("\0\0", 2), u""},
      {"Zg=", "", length},
      {"Zm9v\n", "", length},
      {"*", "", length},
      {"=", "", length},
      {"Zm*v", "", illegal},
      {"Zm9-", "", illegal},
      {"Zm9_", "", illegal},
      {"Zm 9", "", illegal},
      {"Zm9vYg==\r\n\r\n", "", illegal},
      {"AA==AAAA", "", illegal},
      {"A=AA", "", illegal},
      {"=AAA", "", illegal},
      {"A===", "", illegal},
      {"AAAAA===", "", illegal},
      {"*===", "", illegal},
      {"A*==", "", illegal},
      {"AA*=", "", illegal},
      {"AAA\x80", "", illegal},
      {"\xFF"
       "AAA",
       "", illegal},
      {std::string_view("AAA\0", 4), "", illegal},
  };
  for (const auto& [digits, bytes, error] : cases) {
    SCOPED_TRACE(digits);
    try {
      EXPECT_EQ(web().bsDecode(bytes_of(digits)), bytes_of(bytes));
      EXPECT_EQ(error, u"");
    } catch (const RuntimeError& raised) {
      EXPECT_EQ(raised.number(), object_error_base);
      EXPECT_EQ(raised.description(), error);
    }
  }
}

TEST(clsWebEncryption, StringsAreOneByteACharacter) {
  EXPECT_EQ(web().bsEncodeString(u"\u20AC"), u"gA==") << "its code in the ANSI code page";
  EXPECT_EQ(web().bsEncodeString(u"\u0080"), u"gA==") << "its own value";
  EXPECT_EQ(web().bsEncodeString(u"\u0416"), u"Pw==") << "the question mark";
  EXPECT_EQ(web().bsDecodeString(u"gA=="), u"\u0080");
  EXPECT_EQ(raised_number([] { web().bsDecodeString(u"AAA\u0416"); }), object_error_base);
  EXPECT_EQ(raised_number([] { web().bsDecodeString(u"AAA\u00E9"); }), object_error_base);
}

TEST(clsWebEncryption, EnciphersInPlace) {
  String text = u"AB";
  EXPECT_EQ(web().Encrypt(text, u"k"), u"Kik=");  // 41 42 becomes 2A 29
  EXPECT_EQ(text, u"*)");
  text = u"Kik=";
  EXPECT_EQ(web().Decrypt(text, u"k"), u"AB");
  EXPECT_EQ(text, u"AB");
  text = u"same";
  EXPECT_EQ(web().Encrypt(text, text), u"AAAAAA==");
  EXPECT_EQ(text, String(4, u'\0'));
}

TEST(clsWebEncryption, GivesBackEveryTextOfTheCodePage) {
  for (const AnsiCodePage* page : {static_cast<const AnsiCodePage*>(&windows_1252()), &shifted_page()}) {
    const clsWebEncryption object(*page);
    const String text = every_code(*page);
    for (const String& key : {String(u"k"), String(u"a longer key"), text, text.substr(0x80, 0x60)}) {
      String enciphered = text;
      String digits = object.Encrypt(enciphered, key);
      EXPECT_NE(enciphered, text);
      EXPECT_EQ(object.bsEncodeString(enciphered), digits);
      EXPECT_EQ(digits.find_first_not_of(u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/="),
                String::npos);
      EXPECT_EQ(object.Decrypt(digits, key), text);
      EXPECT_EQ(digits, text);
    }
  }
  String longer(10'000, u'x');
  web().Encrypt(longer, u"12345");
  for (std::size_t i = 0; i < longer.size(); ++i) ASSERT_EQ(longer[i], u'x' ^ u"12345"[i % 5]) << "one key goes round";
  String outside = u"a\u0416b";
  outside = web().Encrypt(outside, u"k");
  EXPECT_EQ(web().Decrypt(outside, u"k"), u"a?b");
}

TEST(clsWebEncryption, ErrorsLeaveTheTextAsItWas) {
  String text = u"Kik=";
  EXPECT_EQ(raised_number([&] { web().Encrypt(text, u""); }), 11);
  EXPECT_EQ(raised_number([&] { web().Decrypt(text, u""); }), 11);
  EXPECT_EQ(text, u"Kik=");
  text = u"Kik";
  EXPECT_EQ(raised_number([&] { web().Decrypt(text, u""); }), object_error_base);
  EXPECT_EQ(text, u"Kik");

  text.clear();
  EXPECT_EQ(web().Encrypt(text, u""), u"");
  EXPECT_EQ(web().Decrypt(text, u""), u"");
  text = u"====";
  EXPECT_EQ(web().Decrypt(text, u""), u"");
  EXPECT_EQ(text, u"");
}

}  // namespace
}  // namespace tornby
