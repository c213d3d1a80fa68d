// The system's real print and page-setup dialogs, without a printer and with one.
#include <gtest/gtest.h>

#include "printer.h"
#include "real_dialogs.h"

namespace tornby {
namespace {

using namespace testing;

TEST_F(RealDialogs, WithoutAPrinterPrintAndPageSetupFail) {
  TestPrinter::remove();
  const Answers answers = {press(ok_button)};
  EXPECT_FALSE(dialogs_.blnPrintDialog());
  EXPECT_EQ(dialogs_.lngDialogError(), 0);
  EXPECT_FALSE(answers.seen().empty());
  for (const std::string& title : answers.seen()) EXPECT_EQ(title, "Print") << "the system's own message";
  const Answers setup = {press(ok_button), press(ok_button)};
  EXPECT_FALSE(dialogs_.blnPageSetup());
  EXPECT_EQ(dialogs_.lngDialogError(), 4104);
  EXPECT_EQ(text(dialogs_.strDialogError()), "Unknown Error");
  EXPECT_EQ(setup.seen(), (std::vector<std::string>{"Error", "DIALOG ERROR"}));
  EXPECT_EQ(dialogs_.lngPaperWidth(), 8500);
}

TEST_F(RealDialogs, WithAPrinterPrintAndPageSetupWork) {
  TestPrinter::remove();
  const TestPrinter printer;
  ASSERT_TRUE(printer.installed()) << ::GetLastError();
  {
    const Answers answers = {press(ok_button), press(cancel_button)};
    EXPECT_TRUE(dialogs_.blnPrintDialog());
    EXPECT_FALSE(dialogs_.blnPrintDialog());
    EXPECT_EQ(dialogs_.lngDialogError(), 0);
  }
  dialogs_.intLeftMargin(1000);
  const Answers answers = {[](const OpenDialog& dialog) {
                             EXPECT_EQ(dialog.caption(), "Setup Page");
                             dialog.type(margin_top, "1.25");
                             dialog.type(margin_right, "40");
                             dialog.press(ok_button);
                           },
                           [](const OpenDialog& dialog) {
                             dialog.type(margin_left, "3");
                             dialog.press(cancel_button);
                           }};
  EXPECT_TRUE(dialogs_.blnPageSetup());
  EXPECT_EQ(dialogs_.intLeftMargin(), 1000);
  EXPECT_EQ(dialogs_.intTopMargin(), 1250);
  EXPECT_EQ(dialogs_.intRightMargin(), -25536) << "40 inches, as 16 bits";
  EXPECT_EQ(dialogs_.intBottomMargin(), 500);
  EXPECT_EQ(dialogs_.intMinMarginBottom(), 250);
  const std::int32_t width = dialogs_.lngPaperWidth();
  EXPECT_GT(width, 5000);
  EXPECT_FALSE(dialogs_.blnPageSetup());
  EXPECT_EQ(dialogs_.intLeftMargin(), 1000);
  EXPECT_EQ(dialogs_.lngPaperWidth(), width);
}

}  // namespace
}  // namespace tornby
