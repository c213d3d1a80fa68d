#include "settings/XML_Settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>

#include "settings/document/tag_index.h"
#include "support/errors.h"
#include "support/growth.h"
#include "support/scale.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::raised_number;

using Texts = std::vector<String>;

Texts texts(const StringCollection& items) {
  Texts result;
  for (const String& item : items) result.push_back(item);
  return result;
}

XML_Settings holding(StringView text) {
  XML_Settings settings;
  settings.SetContents(text);
  return settings;
}

TEST(XML_Settings, WritesGroupsAndKeys) {
  const testing::TemporaryFolder folder;
  XML_Settings settings;
  settings.FileName(folder.name_of("a.txt"));
  EXPECT_EQ(settings.GetContents(), u"");
  settings.SaveSetting(u"OPTIONS", u"WIDTH", u"640");
  settings.Save();
  EXPECT_EQ(folder.read("a.txt"), "<OPTIONS>\r\n<WIDTH>640</WIDTH>\r\n</OPTIONS>\r\n");
  EXPECT_EQ(settings.GetContents(), u"\r\n<OPTIONS>\r\n<WIDTH>640</WIDTH>\r\n</OPTIONS>\r\n");  // with its empty lines

  settings.InsertGroup(u"Last", u"x");
  settings.SaveSetting(u"OPTIONS", u"height", u"480");
  settings.SaveSetting(u"OPTIONS", u"WIDTH", u"800");
  settings.Save();
  EXPECT_EQ(folder.read("a.txt"),
            "<LAST>\r\nx\r\n</LAST>\r\n<OPTIONS>\r\n<WIDTH>800</WIDTH>\r\n<HEIGHT>480</HEIGHT>\r\n</OPTIONS>\r\n");
}

TEST(XML_Settings, LosesNothingBetweenLoadingAndSaving) {
  const struct {
    std::string_view before;
    std::string_view after;
  } cases[] = {
      {"", "\r\n"},
      {"<A>\r\n1\r\n</A>", "<A>\r\n1\r\n</A>\r\n"},
      {"<A>\r\n1\r\n</A>\r\n", "<A>\r\n1\r\n</A>\r\n"},
      {"\r\n\r\n<A>\r\n\r\n</A>\r\n ", "<A>\r\n</A>\r\n \r\n"},
      {"<A>\n\n1\r\r\n</A>\n", "<A>\n\n1\r\r\n</A>\n\r\n"},
      {"\xEF\xBB\xBF<A>\xE9\x80\x81\xFF</A>", "\xEF\xBB\xBF<A>\xE9\x80\x81\xFF</A>\r\n"},
      {std::string_view("<A>\0\x1A</A>", 9), std::string_view("<A>\0\x1A</A>\r\n", 11)},
  };
  const testing::TemporaryFolder folder;
  for (const auto& [before, after] : cases) {
    XML_Settings settings;
    settings.FileName(folder.write("a.txt", before));
    settings.Save();
    EXPECT_EQ(folder.read("a.txt"), after);
  }
  XML_Settings settings;
  settings.FileName(folder.write("a.txt", "<A>\r\n<K>\xE9</K>\r\n</A>"));
  settings.SaveSetting(u"B", u"K", u"\u20AC\u0416");
  settings.Save();
  EXPECT_EQ(folder.read("a.txt"), "<A>\r\n<K>\xE9</K>\r\n</A>\r\n<B>\r\n<K>\x80?</K>\r\n</B>\r\n");
}

TEST(XML_Settings, ACopyGoesItsOwnWay) {
  XML_Settings settings = holding(u"");
  settings.SaveSetting(u"A", u"KEY", u"1");
  XML_Settings copy = settings;
  copy.SaveSetting(u"A", u"KEY", u"2");
  EXPECT_EQ(settings.GetSetting(u"A", u"KEY", u""), u"1");
  settings = copy;
  EXPECT_EQ(settings.GetSetting(u"A", u"KEY", u""), u"2");
}

TEST(XML_Settings, KeepsTheListOfRecentFiles) {
  const testing::TemporaryFolder folder;
  XML_Settings settings;
  settings.FileName(folder.name_of("recent.txt"));
  EXPECT_TRUE(settings.ExtractRecent().empty());
  settings.InsertGroup(u"RECENTFILES", u"");
  EXPECT_EQ(settings.ExtractRecent(), (Texts{u""}));
  for (const StringView path : {u"C:\\a.txt", u"C:\\b.txt", u"c:\\A.TXT", u"C:\\a.txt"}) settings.UpdateRecent(path);
  EXPECT_EQ(settings.ExtractRecent(), (Texts{u"C:\\a.txt", u"c:\\A.TXT", u"C:\\b.txt"}));
  EXPECT_EQ(folder.read("recent.txt"),
            "<RECENTFILES>\r\n<FILE>C:\\a.txt</FILE>\r\n<FILE>c:\\A.TXT</FILE>\r\n<FILE>C:\\b.txt</FILE>\r\n"
            "</RECENTFILES>\r\n");

  settings.SetContents(u"<RECENTFILES><FILE>old</FILE></RECENTFILES>");
  settings.UpdateRecent(StringView(settings.GetContents()).substr(19, 3));  // a part of the document itself
  EXPECT_EQ(settings.ExtractRecent(), (Texts{u"old"}));
}

TEST(XML_Settings, EventsReportAndSteerTheScan) {
  XML_Settings settings = holding(u"<ABC> <X>1</X> <Y>2</Y> <Z>3</Z> </ABC>");
  std::vector<std::int32_t> positions;
  settings.ProgressMax = [&](std::int32_t& maximum) {
    EXPECT_EQ(maximum, 39);
    maximum = 1000;
  };
  settings.ProgressCurrent = [&](std::int32_t& position) {
    positions.push_back(position);
    if (position == 16) position = 17;  // past the "<" of Y
    if (position == 34) position = 100;
    settings.SetContents(u"");  // the scan goes on
  };
  EXPECT_EQ(texts(*settings.ExtractBlock(u"ABC")), (Texts{u"1", u"3"}));
  EXPECT_EQ(positions, (std::vector<std::int32_t>{2, 16, 18, 19, 20, 21, 34}));
  EXPECT_EQ(settings.MaxElements(), 1000);
  EXPECT_EQ(settings.ExtractBlock(u"ABC"), nullptr);

  settings.SetContents(u"<ABC></ABC>");
  settings.ProgressMax = [](std::int32_t&) { throw RuntimeError(StandardError::overflow); };
  EXPECT_EQ(raised_number([&] { settings.ExtractBlock(u"ABC"); }), 6);
}

String repeated(StringView piece, unsigned count) {
  String text;
  for (unsigned i = 0; i < count; ++i) text += piece;
  return text;
}

String numbered(StringView before, StringView after, unsigned count) {
  String text;
  for (unsigned i = 0; i < count; ++i) text.append(before).append(widen(std::to_string(i))).append(after);
  return text;
}

/// A text, and a name that nearly occurs in it.
struct Hostile {
  String text;
  String name = text.substr(1, text.size() / 2) + u"!";
};

TEST(XML_Settings, NoTextMakesAMemberSlow) {
  if (testing::scaled(100) < 100) GTEST_SKIP() << "the checked heap takes a step for each block at every turn";
  using Make = Hostile (*)(unsigned);
  const Make documents[] = {
      [](unsigned n) { return Hostile{repeated(u"<A>", n)}; },
      [](unsigned n) { return Hostile{repeated(u"<a>", n) + u"<A></A>"}; },
      [](unsigned n) { return Hostile{repeated(u"</A>", n)}; },
      [](unsigned n) { return Hostile{numbered(u"<T", u">", n)}; },
      [](unsigned n) {
        return Hostile{numbered(u"<t", u">", n) + numbered(u"</T", u">", n) + numbered(u"<T", u">", n)};
      },
      [](unsigned n) { return Hostile{repeated(u"<T>x</T> ", n)}; },
      [](unsigned n) { return Hostile{repeated(u"<", n) + u">"}; },
      [](unsigned n) { return Hostile{repeated(u"<a", n) + u">" + repeated(u"</a", n) + u">"}; },
      [](unsigned n) { return Hostile{repeated(u"<>", n)}; },
      [](unsigned n) { return Hostile{repeated(u">", n) + repeated(u"<", n)}; },
      [](unsigned n) { return Hostile{repeated(u"aaaa", n)}; },
      [](unsigned n) { return Hostile{u"<" + repeated(u"aaaa", n) + u">" + repeated(u"aaaa", n)}; },
      [](unsigned n) { return Hostile{repeated(u"\r\n", n)}; },
  };
  using Use = void (*)(XML_Settings&, const Hostile&);
  const Use members[] = {
      [](XML_Settings& settings, const Hostile& hostile) { settings.SplitBlock(hostile.text); },
      [](XML_Settings& settings, const Hostile&) { settings.FindNodes(); },
      [](XML_Settings& settings, const Hostile&) { settings.ExtractBlock(u"GROUP"); },
      [](XML_Settings& settings, const Hostile&) { settings.SaveSetting(u"GROUP", u"KEY", u"1"); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.SaveSetting(u"GROUP", hostile.name, u"1"); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.SaveSetting(hostile.name, u"KEY", u"1"); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.GetSetting(u"GROUP", hostile.name, u"1"); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.GetStructure(hostile.name, true); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.GetStructure(hostile.name, false); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.InsertGroup(hostile.name, hostile.text); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.ExtractBlock2(hostile.name, false); },
      [](XML_Settings& settings, const Hostile&) { settings.ExtractBlock2(u"A", false); },
      [](XML_Settings&, const Hostile& hostile) { XML_Settings::SuperSplit(u"A", hostile.text); },
      [](XML_Settings&, const Hostile& hostile) { XML_Settings::SuperSplit(hostile.name, hostile.text); },
      [](XML_Settings& settings, const Hostile& hostile) { settings.GetNodeValue(u"<" + hostile.name); },
      [](XML_Settings&, const Hostile& hostile) { XML_Settings::RemoveEmptyLines(hostile.text); },
      [](XML_Settings&, const Hostile& hostile) {
        String block = hostile.text;
        XML_Settings::AddNewValue(hostile.name, u"KEY", u"1", block);
      },
  };
  for (const Make& make : documents) {
    for (const Use& use : members) {
      const double grown = testing::growth(1000, [&](unsigned n) {
        const Hostile hostile = make(n);
        XML_Settings settings = holding(u"<GROUP>" + hostile.text + u"</GROUP>");
        raised_number([&] { use(settings, hostile); });
      });
      EXPECT_LT(grown, testing::most_growth) << "document " << &make - documents << ", member " << &use - members;
    }
  }
}

// Each text is the other with its letters exchanged, which makes any polynomial modulo 2^64 equal for both.
TEST(XML_Settings, TagsCannotBeMadeToCollide) {
  document::SequenceHash a, b;
  for (unsigned i = 0; i < 2048; ++i) {
    const bool odd = std::popcount(i) % 2 == 1;
    a.push_back(odd ? u'A' : u'B');
    b.push_back(odd ? u'B' : u'A');
  }
  EXPECT_NE(a.value(), b.value());
}

}  // namespace
}  // namespace tornby
