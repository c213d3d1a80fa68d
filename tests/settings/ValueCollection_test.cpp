#include "settings/ValueCollection.h"

#include <gtest/gtest.h>

namespace tornby {
namespace {

TEST(ValueCollection, AddsAndFindsPairs) {
  ValueCollection values;
  EXPECT_TRUE(values.DisplayError());
  const auto width = values.Add(u"Width", u"1");
  ASSERT_TRUE(width);
  EXPECT_EQ(values.Add(u"WIDTH", u"2"), nullptr);
  EXPECT_EQ(values.Count(), 1);
  EXPECT_NE(values.Add(u"", u"x"), nullptr);
  EXPECT_NE(values.Add(u"", u"y"), nullptr);
  EXPECT_NE(values.Add(u"3", u"z"), nullptr);

  EXPECT_EQ(values.Item(u"wIDTH"), width);
  EXPECT_EQ(values.Item(std::int16_t{1}), width);
  EXPECT_EQ(values.Item(3)->Value(), u"y");
  EXPECT_EQ(values.Item(u"3")->Value(), u"z");  // a text is a key, never a position
  for (const Variant& missing : {Variant(0), Variant(-1), Variant(5), Variant(u"1"), Variant(u""), Variant()})
    EXPECT_EQ(values.Item(missing), nullptr);
  EXPECT_TRUE(values.Exist(u"width"));
  EXPECT_FALSE(values.Exist(u""));
  EXPECT_FALSE(values.Exist(u"x"));
}

TEST(ValueCollection, PairsOutliveTheirRemoval) {
  ValueCollection values;
  const auto pair = values.Add(u"K", u"v");
  pair->Key(u"other");
  EXPECT_TRUE(values.Exist(u"k"));  // still under the key that it was added with
  values.Remove(u"missing");
  values.Remove(Variant());
  values.Remove(7);
  EXPECT_EQ(values.Count(), 1);
  values.Remove(u"k");
  EXPECT_EQ(values.Count(), 0);
  EXPECT_FALSE(values.Exist(u"K"));
  EXPECT_EQ(pair->Value(), u"v");
}

TEST(ValueCollection, SortLeavesEverythingAsItIs) {
  for (const std::int32_t order : {1, 0}) {
    ValueCollection values;
    for (const StringView value : {u"b", u"", u"a", u"c"}) values.Add(value, value);
    values.Sort(order);
    String all;
    for (const auto& pair : values) all += pair->Key() + u"=" + pair->Value() + u" ";
    EXPECT_EQ(all, u"b=b = a=a c=c ");
  }
}

}  // namespace
}  // namespace tornby
