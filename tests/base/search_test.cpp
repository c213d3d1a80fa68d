#include "base/search.h"

#include <gtest/gtest.h>

#include <random>

#include "base/letter_case.h"
#include "support/scale.h"

namespace tornby {
namespace {

TEST(Search, FindsWhatThePlainSearchFinds) {
  for (unsigned seed = 1; seed <= testing::rounds(testing::scaled(20000)); ++seed) {
    std::mt19937 dice(seed);
    const auto random_text = [&](std::size_t length) {
      String text;
      const auto letters = 1 + dice() % 3;
      while (text.size() < length) text += u"abA\u00E9"[dice() % 8 == 0 ? dice() % 4 : dice() % letters];
      return text;
    };
    String text = random_text(dice() % 1000);
    String what = random_text(1 + dice() % 200);
    if (dice() % 2 == 0 && !text.empty()) {
      what = text.substr(dice() % text.size(), 1 + dice() % 300);
      if (dice() % 2 == 0) what += u'b';
    }
    const std::size_t from = dice() % (text.size() + 2);
    ASSERT_EQ(find_text(text, what, from), text.find(what, from)) << seed;
    ASSERT_EQ(find_ignoring_case(text, what, from), upper(text).find(upper(what), from)) << seed;
  }
}

}  // namespace
}  // namespace tornby
