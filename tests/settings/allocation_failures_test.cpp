// Memory that runs out in a member leaves the object as it was.
#include <gtest/gtest.h>

#include <new>

#include "settings/ValueCollection.h"
#include "settings/XML_Settings.h"
#include "support/failing_allocations.h"

namespace tornby {
namespace {

TEST(AllocationFailures, LeaveADocumentAsItWas) {
  const String text = u"<LONG NAMED GROUP>\r\n<LONG NAMED KEY>a value\r\n</LONG NAMED KEY>\r\n</LONG NAMED GROUP>\r\n";
  using Change = void (*)(XML_Settings&);
  const Change changes[] = {
      [](XML_Settings& it) { it.SaveSetting(u"LONG NAMED GROUP", u"Long named key", u"another long value"); },
      [](XML_Settings& it) { it.SaveSetting(u"LONG NAMED GROUP", u"Another long key", u"another long value"); },
      [](XML_Settings& it) { it.SaveSetting(u"ANOTHER LONG GROUP", u"Another long key", u"another long value"); },
      [](XML_Settings& it) { it.SaveSetting(u"long named group", u"Another long key", u"another long value"); },
      [](XML_Settings& it) { it.InsertGroup(u"LONG NAMED GROUP", u"another long value"); },
      [](XML_Settings& it) { it.SetContents(u"another long value"); },
  };
  for (const Change& change : changes) {
    testing::fail_each_allocation([&](testing::AllocationFailure& failure) {
      XML_Settings settings, expected;
      settings.SetContents(text);
      expected.SetContents(text);
      try {
        failure.during([&] { change(settings); });
        change(expected);
      } catch (const std::bad_alloc&) {
      }
      EXPECT_EQ(settings.GetContents(), expected.GetContents()) << "change " << &change - changes;
      change(settings);
      EXPECT_EQ(settings.GetSetting(u"LONG NAMED GROUP", u"none", u"default"), u"default");
    });
  }
}

TEST(AllocationFailures, LeaveACollectionAsItWas) {
  testing::fail_each_allocation([](testing::AllocationFailure& failure) {
    ValueCollection values;
    for (int i = 0; i < 16; ++i) values.Add(u"a rather long key " + widen(std::to_string(i)), u"");
    const auto pair = values.Item(3);
    const auto attempt = [&](auto action) {
      try {
        failure.during(action);
        return true;
      } catch (const std::bad_alloc&) {
        return false;
      }
    };
    const bool removed = attempt([&] { values.Remove(5); });
    const bool added = attempt([&] { values.Add(u"one more rather long key", u"v"); });
    const bool renamed = attempt([&] { pair->Key(u"quite another rather long key"); });
    EXPECT_EQ(values.Count(), 16 - removed + added);
    EXPECT_EQ(values.Exist(u"a rather long key 4"), !removed);
    EXPECT_EQ(values.Exist(u"one more rather long key"), added);
    EXPECT_EQ(values.Item(u"a rather long key 2"), pair);
    EXPECT_EQ(pair->Key(), renamed ? u"quite another rather long key" : u"a rather long key 2");
  });
}

}  // namespace
}  // namespace tornby
