#include "controls/values.h"
#include "controls/mnemonic.h"

#include <gtest/gtest.h>

#include "support/errors.h"

namespace tornby {
namespace {

using testing::raised_number;

TEST(PropertyValue, ConvertsBetweenKindsOfNumbers) {
  struct Case {
    PropertyValue from, to;
  };
  const Case cases[] = {{true, std::int16_t{-1}},
                        {std::int16_t{1}, true},
                        {std::int32_t{0}, false},
                        {std::int32_t{-2147483633}, Color{0x8000000F}},
                        {Color{0x80000012}, std::int32_t{-2147483630}},
                        {String(u"255"), Color{255}},
                        {String(u"True"), true},
                        {String(u"0"), false},
                        {std::int32_t{12}, String(u"12")}};
  for (const Case& c : cases) EXPECT_TRUE(to_kind(c.from, kind_of(c.to)) == c.to) << &c - cases;
  EXPECT_EQ(raised_number([] { to_kind(std::int32_t{40000}, PropertyKind::int16); }), 6);
  EXPECT_EQ(raised_number([] { to_kind(String(u"red"), PropertyKind::color); }), 13);
  EXPECT_EQ(raised_number([] { to_kind(Font(), PropertyKind::boolean); }), 13);
  EXPECT_EQ(raised_number([] { to_kind(true, PropertyKind::picture); }), 13);
}

TEST(PropertyValue, ComparesNumbersOfDifferentKinds) {
  EXPECT_TRUE(equal_values(false, std::int16_t{0}));
  EXPECT_TRUE(equal_values(true, std::int16_t{-1}));
  EXPECT_FALSE(equal_values(true, std::int16_t{1}));
  EXPECT_TRUE(equal_values(std::int32_t{1}, std::int16_t{1}));
  EXPECT_FALSE(equal_values(std::int32_t{1}, String(u"1")));
  EXPECT_TRUE(equal_values(Font(), Font()));
  EXPECT_FALSE(equal_values(Font(), Font{.italic = true}));
  EXPECT_TRUE(equal_values(PicturePointer(), PicturePointer()));
}

TEST(Mnemonic, IsTheFirstMarkedLetter) {
  const struct {
    const char16_t* caption;
    char16_t letter;
    const char16_t* plain;
  } cases[] = {
      {u"", 0, u""},
      {u"Name", 0, u"Name"},
      {u"&Name", u'N', u"Name"},
      {u"A && B", 0, u"A & B"},
      {u"&&&Name", u'N', u"&Name"},
      {u"Save & E&xit", u'x', u"Save  Exit"},
      {u"End&", 0, u"End"},
  };
  for (const auto& [caption, letter, plain] : cases) {
    EXPECT_EQ(mnemonic(caption), letter);
    EXPECT_EQ(without_mnemonic(caption), plain);
  }
}

}  // namespace
}  // namespace tornby
