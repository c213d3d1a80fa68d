#include <gtest/gtest.h>

#include "platform/windows/code_page.h"

namespace tornby {
namespace {

TEST(WindowsCodePage, SystemTableAgreesWithOurOwn1252) {
  const auto page = windows::make_code_page(1252);
  EXPECT_EQ(page->identifier(), 1252u);
  EXPECT_EQ(page->bytes_per_unit(), 1u);
  Bytes all(256);
  for (unsigned code = 0; code < all.size(); ++code) all[code] = static_cast<std::uint8_t>(code);
  EXPECT_EQ(page->encode(page->decode(all)), all);
  EXPECT_EQ(page->encode(u"\u20AC\U0001F600\u0416"), (Bytes{0x80, '?', '?', '?'}));
}

TEST(WindowsCodePage, TwoByteCharacters) {
  const auto japanese = windows::make_code_page(932);
  ASSERT_EQ(japanese->bytes_per_unit(), 2u);
  const String text = u"a\u3042z";  // hiragana A
  const Bytes bytes = {'a', 0x82, 0xA0, 'z'};
  EXPECT_EQ(japanese->encode(text), bytes);
  EXPECT_EQ(japanese->decode(bytes), text);
  EXPECT_EQ(japanese->code_of(u'\u3042'), 0x82A0u);
  EXPECT_EQ(japanese->code_of(u'a'), 0x61u);
  EXPECT_TRUE(japanese->encode(u"").empty());
}

}  // namespace
}  // namespace tornby
