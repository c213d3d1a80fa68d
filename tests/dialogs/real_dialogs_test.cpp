// The system's real dialogs, answered from inside the process.
#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <thread>

#include "answering.h"
#include "base/runtime_error.h"
#include "dialogs/clsDIALOGS.h"
#include "real_dialogs.h"
#include "scripted.h"

namespace tornby {
namespace {

using namespace testing;
using namespace std::literals;

TEST_F(RealDialogs, TooSmallABufferIsReportedInABox) {
  dialogs_.lngMaxFileNameBuffer(3);
  std::string message;
  const Answers answers = {type_name("a.txt"), [&](const OpenDialog& box) {
                             message = box.text(box_text);
                             box.press(ok_button);
                           }};
  EXPECT_EQ(text(dialogs_.strGetOpenFileName()), "");
  EXPECT_EQ(dialogs_.lngDialogError(), 12291);
  ASSERT_EQ(answers.seen().size(), 2u);
  EXPECT_EQ(answers.seen()[1], "DIALOG ERROR");
  EXPECT_EQ(message, "File Name/Title Buffer Too Small");

  start_in_folder();
  dialogs_.blnShowErrorMessages(false);
  const Answers silent = {type_name("a.txt")};
  EXPECT_EQ(text(dialogs_.strGetSaveFileName()), "");
  EXPECT_EQ(dialogs_.lngDialogError(), 12291);
  EXPECT_EQ(silent.seen().size(), 1u);
}

TEST_F(RealDialogs, AVeryLongSelectionComesThroughOrIsCutOff) {
  dialogs_.blnAllowMultipleFileSelect(true);
  std::string typed;
  for (int i = 0; i < 300; ++i) {
    const std::string name = "file number " + std::to_string(1000 + i) + std::string(80, 'x');
    folder_.write(name, "");
    typed += '"' + name + "\" ";
  }
  for (const std::int32_t length : {32000, 2048}) {
    start_in_folder();
    dialogs_.lngMaxFileNameBuffer(length);
    const std::string result = open(typed.c_str());
    if (length == 32000) {
      EXPECT_EQ(dialogs_.lngNumFilesSelected(), 300);
      EXPECT_EQ(result.size(), 300u * 97 + 1);
      EXPECT_TRUE(dialogs_.fstrReturnSingleFileName(255).starts_with(String(path_.begin(), path_.end())));
    } else {
      EXPECT_EQ(dialogs_.lngNumFilesSelected(), 1) << "cut off, without closing NULs";
      EXPECT_EQ(result, path_);
    }
  }
}

TEST_F(RealDialogs, AnOwnerThatHasGoneCountsAsACancel) {
  const HWND gone = ::CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  ::DestroyWindow(gone);
  const auto owner = static_cast<std::int32_t>(reinterpret_cast<INT_PTR>(gone));
  dialogs_.lngHWnd(owner);
  const Answers answers = {};
  EXPECT_EQ(text(dialogs_.strGetOpenFileName()), "");
  EXPECT_EQ(text(dialogs_.strGetSaveFileName()), "");
  EXPECT_EQ(text(dialogs_.fstrBrowseForFolder(owner)), "");
  EXPECT_FALSE(dialogs_.blnChooseFont());
  EXPECT_EQ(dialogs_.lngFontSize(), 10);
  EXPECT_FALSE(dialogs_.blnPrintDialog());
  EXPECT_EQ(dialogs_.lngDialogError(), 0);
  EXPECT_TRUE(answers.seen().empty());
}

TEST_F(RealDialogs, ChoosesAFolder) {
  std::string shown_instruction;
  const Answers answers = {[&](const OpenDialog& dialog) {
    shown_instruction = dialog.text(instruction);
    constexpr UINT select_folder = WM_USER + 102;
    ::SendMessageA(dialog.window(), select_folder, TRUE, reinterpret_cast<LPARAM>(path_.c_str()));
    dialog.press(ok_button);
  }};
  EXPECT_EQ(text(dialogs_.fstrBrowseForFolder(0)), path_);
  EXPECT_EQ(shown_instruction, "Select Folder");
  const Answers cancelled = {press(cancel_button)};
  EXPECT_EQ(text(dialogs_.fstrBrowseForFolder(0)), "");
}

TEST_F(RealDialogs, ChoosesFonts) {
  const struct {
    const char* style;
    bool bold, italic;
    const char* result;
  } cases[] = {{"Bold", true, false, "Bold"},
               {"Bold Italic", true, true, "Italic"},
               {"Italic", false, true, "Italic"},
               {"Regular", false, false, ""}};
  for (const auto& [style, bold, italic, result] : cases) {
    const Answers answers = {[&](const OpenDialog& dialog) {
      dialog.choose(font_face, "DejaVu Sans");
      dialog.choose(font_style, style);
      dialog.choose(font_size, "14");
      dialog.choose(font_color, "Red");
      dialog.press(ok_button);
    }};
    ASSERT_TRUE(dialogs_.blnChooseFont());
    EXPECT_EQ(dialogs_.blnIsFontBold(), bold) << style;
    EXPECT_EQ(dialogs_.blnIsFontItalic(), italic) << style;
    EXPECT_EQ(text(dialogs_.strFontStyle()), result);
    EXPECT_EQ(dialogs_.lngFontSize(), 14);
    EXPECT_EQ(dialogs_.lngFontColor(), 255);
    EXPECT_EQ(text(dialogs_.strFontFaceName()).substr(0, 11), "DejaVu Sans");
    EXPECT_EQ(dialogs_.lngFontType() & 0x300, (bold ? 0x100 : 0) | (italic ? 0x200 : 0));
  }
  const Answers cancelled = {press(cancel_button)};
  EXPECT_FALSE(dialogs_.blnChooseFont());
  EXPECT_EQ(dialogs_.lngFontSize(), 14);
  EXPECT_EQ(dialogs_.lngDialogError(), 0);
}

TEST_F(RealDialogs, PromptOffersThreeButtons) {
  ScriptedDialogs failing;
  failing.before_call = [] { throw RuntimeError(StandardError::permission_denied); };
  clsDIALOGS dialogs(failing);
  dialogs.blnUsePersistence(false);
  dialogs.lngHWnd(native_dialogs().desktop_window());
  std::string message;
  const Answers::Answer retried = when_running([&](const OpenDialog& box) {
    message = box.text(box_text);
    box.press(retry_button);
  });
  const Answers answers = {retried, press(abort_button), press(ignore_button)};
  dialogs.strGetOpenFileName();
  EXPECT_EQ(failing.calls, 2);
  EXPECT_EQ(message, "Error #:70\r\nPermission denied\r\nN/A");
  dialogs.strGetOpenFileName();
  EXPECT_EQ(text(dialogs.strDialogError()), "General Codes Failure") << "ignored: the next step ran";
  EXPECT_EQ(answers.seen(), std::vector<std::string>(3, "GET_OPEN_FILE_NAME_ERROR"));
}

TEST(RealDialogsInOtherThreads, LeaveAnApartmentAsTheyFoundIt) {
  for (const DWORD apartment : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
    std::thread([apartment] {
      ASSERT_EQ(::CoInitializeEx(nullptr, apartment), S_OK);
      clsDIALOGS dialogs;
      dialogs.blnUsePersistence(false);
      const Answers answers = {press(cancel_button), press(cancel_button), press(cancel_button)};
      dialogs.strGetOpenFileName();
      dialogs.fstrBrowseForFolder(0);
      dialogs.blnChooseFont();
      EXPECT_EQ(answers.seen().size(), 3u);
      EXPECT_EQ(::CoInitializeEx(nullptr, apartment), S_FALSE) << "still set up, and in the same way";
      ::CoUninitialize();
      ::CoUninitialize();
    }).join();
  }
}

}  // namespace
}  // namespace tornby
