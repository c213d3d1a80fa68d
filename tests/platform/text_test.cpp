#include <gtest/gtest.h>

#include <tornby/platform/text.h>

namespace tornby {
namespace {

TEST(Text, GoesToUtf8AndBack) {
  for (const StringView text : {u"", u"plain", u"\u007f\u0080\u07ff\u0800\uffff", u"\U00010000\U0010ffff",
                                u"\ufeff\u041f\u0440\u0438\U0001f600"}) {
    EXPECT_EQ(from_utf8(to_utf8(text)), text);
    EXPECT_EQ(from_wide(to_wide(text)), text);
  }
  EXPECT_EQ(to_utf8(u"\u00e9\u20ac\U0001f600"), "\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
  EXPECT_EQ(to_wide(u"\u00e9\U0001f600"), L"\u00e9\U0001f600");
}

TEST(Text, ReplacesWhatIsNoUtf8) {
  const struct {
    std::string_view bytes;
    StringView text;
  } cases[] = {{"a\x80z", u"a\ufffdz"},
               {"\xc0\xaf", u"\ufffd\ufffd"},                      // overlong
               {"\xe0\x9f\xbf", u"\ufffd\ufffd\ufffd"},            // overlong
               {"\xed\xa0\x80", u"\ufffd\ufffd\ufffd"},            // a surrogate
               {"\xf4\x90\x80\x80", u"\ufffd\ufffd\ufffd\ufffd"},  // above U+10FFFF
               {"\xf0\x9f\x98z", u"\ufffdz"},                      // breaks off
               {"\xe2\x82", u"\ufffd"}};
  for (const auto& [bytes, text] : cases) EXPECT_EQ(from_utf8(bytes), text) << bytes;
  const String halves = {u'a', 0xD83D, u'b', 0xDE00, 0xD83D};
  EXPECT_EQ(to_utf8(halves),
            "a\xef\xbf\xbd"
            "b\xef\xbf\xbd\xef\xbf\xbd");
}

TEST(Text, GoesToTheCodePage) {
  EXPECT_EQ(to_ansi(u"caf\u00e9"), "caf\xe9");
  EXPECT_EQ(from_ansi("\x80uro"), u"\u20acuro");
  EXPECT_EQ(to_ansi(u"\u0416"), "?");
}

}  // namespace
}  // namespace tornby
