#include "base/letter_case.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace tornby
