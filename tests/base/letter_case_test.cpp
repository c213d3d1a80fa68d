#include "base/letter_case.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "base/hashing.h"

namespace tornby {
namespace {

TEST(LetterCase, RaisesWhatHasOneUpperCaseFormThatLeadsBack) {
  EXPECT_EQ(upper(u"azAZ09<>/ \u00E9\u00F7\u00FF\u0101\u0103\u0430\u03B1\u1E01"),
            u"AZAZ09<>/ \u00C9\u00F7\u0178\u0100\u0102\u0410\u0391\u1E00");
  const StringView stays = u"\u00DF\u00B5\u0131\u0130\u017F\u0149\u01C5\uFB01\U00010428";
  EXPECT_EQ(upper(stays), stays);
}

TEST(LetterCase, UpperCaseIsStableAndUnambiguous) {
  std::vector<int> sources(0x10000);
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const char16_t raised = upper(static_cast<char16_t>(unit));
    EXPECT_EQ(upper(raised), raised) << unit;
    ++sources[raised];
  }
  EXPECT_EQ(std::count(sources.begin(), sources.end(), 2), 1136);  // the letters of the table
  EXPECT_EQ(*std::max_element(sources.begin(), sources.end()), 2);
}

// Two texts that differ in one unit, in every place of every length around what vectors take.
TEST(LetterCase, ComparesAndHashesAsRaisedTextsDo) {
  for (std::size_t size = 1; size <= 20; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (char16_t unit = 0; unit < 0x180; ++unit) {
        for (const char16_t other : {static_cast<char16_t>(unit ^ 0x20), static_cast<char16_t>(unit + 0x100)}) {
          String a(size, u'k'), b(size, u'K');
          a[at] = unit;
          b[at] = other;
          const bool same = upper(a) == upper(b);
          ASSERT_EQ(equal_ignoring_case(a, b), same) << size << ' ' << at << ' ' << unsigned{unit};
          ASSERT_TRUE(!same || hashing::hash_ignoring_case(a) == hashing::hash_ignoring_case(b))
              << size << ' ' << unsigned{unit};
          ASSERT_FALSE(equal_ignoring_case(a, StringView(b).substr(1)));
        }
      }
    }
  }
  // A hash that leaves out a unit or the size would collide here.
  std::set<std::uint32_t> hashes;
  std::size_t texts = 0;
  for (std::size_t size = 0; size <= 600; size += size < 40 ? 1 : 37) {
    hashes.insert(hashing::hash_ignoring_case(String(size, u'\0')));
    texts += 1 + size;
    for (std::size_t at = 0; at < size; ++at) {
      String text(size, u'\0');
      text[at] = at % 2 ? u'\u0444' : u'x';
      hashes.insert(hashing::hash_ignoring_case(text));
    }
  }
  EXPECT_GE(hashes.size(), texts - 2) << "chance allows for one collision in two hundred runs";
}

}  // namespace
}  // namespace tornby
