#include "base/variant.h"

#include <gtest/gtest.h>

#include "support/errors.h"

namespace tornby {
namespace {

TEST(Variant, ConvertsToA32BitInteger) {
  const struct {
    Variant value;
    std::int32_t number;
  } cases[] = {
      {{}, 0},
      {std::int16_t{-7}, -7},
      {std::int32_t{1 << 30}, 1 << 30},
      {u"12", 12},
      {u" \t-2147483648 \n", INT32_MIN},
      {u"+2147483647", INT32_MAX},
      {u"2.5", 2},
      {u"3.5", 4},
      {u"-2.5", -2},
      {u"1e3", 1000},
      {u"&H7f", 127},
      {u"&hFFFFFFFF", -1},
      {u"&O17", 15},
  };
  for (const auto& [value, number] : cases) EXPECT_EQ(to_int32(value), number);
}

TEST(Variant, RefusesWhatIsNoSuchNumber) {
  using testing::raised_number;
  for (const StringView text : {u"", u"  ", u"abc", u"12abc", u"+-1", u"--1", u"&H", u"&HG", u"&", u"nan", u"inf",
                                u"1,5", u"\u0661", u"+", u"0x10"})
    EXPECT_EQ(raised_number([&] { to_int32(String(text)); }), 13) << std::string(text.begin(), text.end());
  for (const StringView text : {u"2147483648", u"-2147483649", u"1e300", u"1e999", u"&H100000000"})
    EXPECT_EQ(raised_number([&] { to_int32(String(text)); }), 6);
  EXPECT_EQ(raised_number([] { to_int32(String(5000, u'1')); }), 13);
}

}  // namespace
}  // namespace tornby
