// Memory that runs out in a member leaves the object as it was.
#include <gtest/gtest.h>

#include <new>

#include "settings/PathClass.h"
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

XML_Settings long_document() {
  XML_Settings settings;
  settings.SetContents(
      u"<A GROUP OF A LONG NAME>\r\n<KEY>a rather long value</KEY>\r\n</A GROUP OF A LONG NAME>\r\n"
      u"<RECENTFILES>\r\n<FILE>a rather long file name</FILE>\r\n</RECENTFILES>");
  return settings;
}

String joined(const StringCollection& items) {
  String all;
  for (const String& item : items) all.append(item).append(u"|");
  return all;
}

TEST(AllocationFailures, MakeNoAnswerWrong) {
  static constexpr StringView group = u"A group of a long name";
  using Ask = String (*)();
  for (const Ask ask : {
           Ask([] { return long_document().GetSetting(group, u"key", u"none"); }),
           Ask([] { return long_document().GetBlock(group, true) + long_document().GetStructure(group, true); }),
           Ask([] { return joined(*long_document().ExtractBlock(group)); }),
           Ask([] { return joined(long_document().ExtractBlock2(u"KEY", false)); }),
           Ask([] { return joined(XML_Settings::SuperSplit(u"KEY", long_document().GetContents())); }),
           Ask([] { return joined(long_document().FindNodes()); }),
           Ask([] { return long_document().SplitBlock(u"<KEY>a rather long value</KEY>").Item(1)->Value(); }),
           Ask([] {
             String path = u"%WINDIR%/a rather long name";
             return PathClass().ProcessPath(path, true);
           }),
           Ask([] { return std::get<String>(PathClass().AppData()); }),
           Ask([] { return XML_Settings::RemoveEmptyLines(u"\r\na rather long line\r\n\r\nanother line"); }),
       })
    testing::expect_no_wrong_answer(ask);
}

}  // namespace
}  // namespace tornby
