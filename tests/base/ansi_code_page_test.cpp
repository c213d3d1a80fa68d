#include <gtest/gtest.h>

#include "base/single_byte_code_page.h"

namespace tornby {
namespace {

TEST(Windows1252, EveryByteSurvivesTheWayThereAndBack) {
  Bytes all(256);
  for (unsigned code = 0; code < all.size(); ++code) all[code] = static_cast<std::uint8_t>(code);
  const String text = windows_1252().decode(all);
  EXPECT_EQ(windows_1252().encode(text), all);
  EXPECT_EQ(text.substr(0x80, 3), u"\u20AC\u0081\u201A");
  EXPECT_EQ(text.substr(0xA0), [] {
    String latin;
    for (char16_t c = 0xA0; c < 0x100; ++c) latin += c;
    return latin;
  }());
}

TEST(Windows1252, WhatItLacksBecomesAQuestionMark) {
  const Bytes bytes = windows_1252().encode(u"a\u0416\u20AC\U0001F600z");
  EXPECT_EQ(bytes, (Bytes{'a', '?', 0x80, '?', '?', 'z'}));
  EXPECT_EQ(windows_1252().code_of(u'\u0178'), 0x9Fu);
  EXPECT_EQ(windows_1252().code_of(u'\u0080'), unsigned{'?'});
}

}  // namespace
}  // namespace tornby
