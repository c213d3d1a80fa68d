// Font, page setup, print and about: what the dialogs are asked, and what is made of their answers.
#include <gtest/gtest.h>

#include "scripted.h"

namespace tornby {
namespace {

using testing::Script;
using testing::shown;
using namespace std::literals;

TEST(FontDialog, IsAskedFieldByField) {
  Script script;
  script->lngHWnd(42);
  EXPECT_FALSE(script->blnChooseFont());
  const FontDialogRequest& request = script.dialogs.font;
  EXPECT_EQ(request.structure_size, 60u);
  EXPECT_EQ(request.owner, 42);
  EXPECT_EQ(request.flags, 0x309C3u);
  EXPECT_EQ(request.font_type, 1024);
  EXPECT_EQ(request.color, 0u);
  EXPECT_EQ(request.font.character_set, 1);
  EXPECT_EQ(request.font.height + request.font.weight + request.font.italic, 0);
  EXPECT_EQ(request.font.face, (std::array<char, 32>{}));
  EXPECT_EQ(request.style, std::string(64, '\0'));
}

TEST(FontDialog, RoundsToWholePoints) {
  const struct {
    std::int32_t tenths, points;
  } cases[] = {
      {105, 10}, {115, 12}, {104, 10}, {106, 11}, {10, 1}, {9, 10}, {0, 10}, {-80, 10}, {2147483647, 214748365}};
  for (const auto& [tenths, points] : cases) {
    Script script;
    script.dialogs.font_chosen.result = 1;
    script.dialogs.font_chosen.point_size = tenths;
    EXPECT_TRUE(script->blnChooseFont());
    EXPECT_EQ(script->lngFontSize(), points) << tenths;
  }
}

FontDialogAnswer chosen(std::uint16_t type, std::string style) {
  FontDialogAnswer answer{1, {}, 120, 0x0000FF, type, std::move(style)};
  std::copy_n("D\xE9ja", 5, answer.font.face.begin());
  return answer;
}

TEST(FontDialog, TakesOverWhatWasChosen) {
  Script script;
  script.dialogs.font_chosen = chosen(0x8104, "");
  ASSERT_TRUE(script->blnChooseFont());
  EXPECT_EQ(script->lngFontSize(), 12);
  EXPECT_EQ(script->strFontFaceName(), u"D\u00E9ja");
  EXPECT_EQ(script->lngFontColor(), 255);
  EXPECT_EQ(script->lngFontType(), -32508) << "16 bits with their sign";

  script.dialogs.font_chosen.font.face.fill('x');
  ASSERT_TRUE(script->blnChooseFont());
  EXPECT_EQ(shown(script->strFontFaceName()), std::string(32, 'x')) << "a face without a closing NUL";
}

TEST(FontDialog, StyleFollowsTheTypeBitsOnlyWhileTheSystemNamesNone) {
  const struct {
    std::uint16_t type;
    std::string style;
    bool bold, italic;
    const char* result;
  } cases[] = {
      {0x104, std::string(64, '\0'), true, false, "Bold"},
      {0x304, "", true, true, "Italic"},
      {0x204, "\0left over"s, false, true, "Italic"},
      {0x304, "Bold Italic\0"s, false, true, "Regular"},  // the flags stay
      {0x004, "", false, false, ""},
      {0x304, "Regular", false, false, "Regular"},
  };
  Script script;
  for (const auto& [type, style, bold, italic, result] : cases) {
    script.dialogs.font_chosen = chosen(type, style);
    ASSERT_TRUE(script->blnChooseFont());
    EXPECT_EQ(script->blnIsFontBold(), bold) << result;
    EXPECT_EQ(script->blnIsFontItalic(), italic) << result;
    EXPECT_EQ(shown(script->strFontStyle()), result);
  }
}

TEST(FontDialog, KeepsTheFontWhenCancelledOrTheOwnerHasGone) {
  for (const std::int32_t failure : {0, -1}) {
    Script script;
    script.dialogs.font_chosen = chosen(0x104, "");
    ASSERT_TRUE(script->blnChooseFont());
    script.dialogs.font_chosen = {failure, {}, 0, 0x123456, 0x204, ""};
    EXPECT_FALSE(script->blnChooseFont());
    EXPECT_EQ(script->lngFontSize(), 12);
    EXPECT_EQ(script->lngFontColor(), 255);
    EXPECT_EQ(shown(script->strFontStyle()), "Bold");
    EXPECT_FALSE(script->strFontFaceName().empty());
    EXPECT_EQ(shown(script->strDialogError()), "General Codes Failure");
  }
}

/// All eight margins of an object, and its paper.
std::array<std::int32_t, 10> page_of(clsDIALOGS& dialogs) {
  return {dialogs.lngPaperWidth(),   dialogs.lngPaperHeight(),    dialogs.intMinMarginLeft(),
          dialogs.intMinMarginTop(), dialogs.intMinMarginRight(), dialogs.intMinMarginBottom(),
          dialogs.intLeftMargin(),   dialogs.intTopMargin(),      dialogs.intRightMargin(),
          dialogs.intBottomMargin()};
}
std::array<std::int32_t, 10> values(const Page& page) {
  const Margins& least = page.minimum_margins;
  const Margins& margins = page.margins;
  return {page.width,   page.height,  least.left,  least.top,     least.right,
          least.bottom, margins.left, margins.top, margins.right, margins.bottom};
}

TEST(PageSetup, PassesAndTakesEachMeasureInItsPlace) {
  Script script;
  script->lngHWnd(42);
  script->intMinMarginLeft(1);
  script->intMinMarginTop(2);
  script->intMinMarginRight(3);
  script->intMinMarginBottom(-4);
  script->intLeftMargin(5);
  script->intTopMargin(6);
  script->intRightMargin(-7);
  script->intBottomMargin(8);
  const auto before = page_of(*script.object);
  EXPECT_FALSE(script->blnPageSetup());
  EXPECT_EQ(script.dialogs.page.structure_size, 84u);
  EXPECT_EQ(script.dialogs.page.owner, 42);
  EXPECT_EQ(script.dialogs.page.flags, 7u);
  const std::array<std::int32_t, 10> expected = {8500, 11000, 1, 2, 3, -4, 5, 6, -7, 8};
  EXPECT_EQ(values(script.dialogs.page.page), expected);
  EXPECT_EQ(page_of(*script.object), before) << "cancelled";

  script.dialogs.page_set_up = {-1, {1, 2, {3, 3, 3, 3}, {4, 4, 4, 4}}};
  EXPECT_FALSE(script->blnPageSetup());
  EXPECT_EQ(page_of(*script.object), before);

  script.dialogs.page_set_up = {1, {82630, 116920, {11, 12, 13, 14}, {40000, 65536 + 7, -5, 32767}}};
  EXPECT_TRUE(script->blnPageSetup());
  const std::array<std::int32_t, 10> after = {82630, 116920, 11, 12, 13, 14, -25536, 7, -5, 32767};
  EXPECT_EQ(page_of(*script.object), after);
}

TEST(PrintDialog, IsAskedAndAnswered) {
  Script script;
  script->lngHWnd(42);
  EXPECT_FALSE(script->blnPrintDialog());
  EXPECT_EQ(script.dialogs.printing.structure_size, 66u);
  EXPECT_EQ(script.dialogs.printing.owner, 42);
  EXPECT_EQ(script.dialogs.printing.flags, 0u);
  script.dialogs.printed.result = 1;
  EXPECT_TRUE(script->blnPrintDialog());
}

TEST(AboutBox, NamesTheModuleAndItsVersion) {
  Script script;
  script->lngHWnd(42);
  EXPECT_EQ(script->flngShowAbout(), 1);
  EXPECT_EQ(script.dialogs.about.owner, 0);
  EXPECT_EQ(script.dialogs.about.application, "Host 2.1.40");
  EXPECT_EQ(script.dialogs.about.further_text, "(c) \xE9");
}

}  // namespace
}  // namespace tornby
