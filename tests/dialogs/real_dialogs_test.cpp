// The system's real dialogs, answered from inside the process.
#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <fstream>
#include <thread>

#include "answering.h"
#include "base/runtime_error.h"
#include "dialogs/clsDIALOGS.h"
#include "real_dialogs.h"

namespace tornby {
namespace {

using namespace testing;
using namespace std::literals;

TEST_F(RealDialogs, OpensOneFile) {
  std::string caption;
  const Answers answers = {when_running([&](const OpenDialog& dialog) {
    caption = dialog.caption();
    dialog.choose(file_types, 1);
    dialog.type(file_name, "a.txt", "Edit");
    dialog.press(ok_button);
  })};
  EXPECT_EQ(text(dialogs_.strGetOpenFileName()), path_ + "\\a.txt");
  EXPECT_EQ(caption, "Select File To Open");
  EXPECT_EQ(text(dialogs_.strLastOpenFile()), path_ + "\\a.txt");
  EXPECT_EQ(text(dialogs_.strLastOpenFolder()), path_ + "\\");
  EXPECT_EQ(text(dialogs_.strInitialDir()), path_ + "\\");
  EXPECT_EQ(dialogs_.lngLastOpenFilter(), 2);
  EXPECT_EQ(answers.seen().size(), 1u);
}

TEST_F(RealDialogs, OpensOneOrSeveralFilesWithMultipleSelection) {
  dialogs_.blnAllowMultipleFileSelect(true);
  EXPECT_EQ(open("\"bb.txt\" \"a.txt\" \"c.dat\""), "bb.txt\0a.txt\0c.dat\0\0"s);
  EXPECT_EQ(dialogs_.lngNumFilesSelected(), 3);
  EXPECT_EQ(text(dialogs_.fstrReturnSingleFileName(0)), path_ + "\\bb.txt");
  EXPECT_EQ(text(dialogs_.fstrReturnSingleFileName(2)), path_ + "\\c.dat");
  EXPECT_EQ(text(dialogs_.strLastOpenFolder()), path_ + "\\");
  EXPECT_EQ(open("a.txt"), path_ + "\\a.txt");
  EXPECT_EQ(dialogs_.lngNumFilesSelected(), 1);
  EXPECT_EQ(text(dialogs_.strLastOpenFile()), "a.txt");
}

TEST_F(RealDialogs, UnknownNameIsRefusedByTheDialog) {
  const Answers answers = {type_name("none.txt"), press(ok_button), press(cancel_button)};
  EXPECT_EQ(text(dialogs_.strGetOpenFileName()), "");
  EXPECT_TRUE(answers.all_given());
}

TEST_F(RealDialogs, CancelledOpenIsSilent) {
  const Answers answers = {press(cancel_button)};
  EXPECT_EQ(text(dialogs_.strGetOpenFileName()), "");
  EXPECT_EQ(dialogs_.lngDialogError(), 0);
  EXPECT_EQ(text(dialogs_.strDialogError()), "General Codes Failure");
  EXPECT_EQ(answers.seen().size(), 1u);
}

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

TEST_F(RealDialogs, SavesUnderANewNameAndOverAnOldOne) {
  for (const char* name : {"new", "a.txt"}) {
    const Answers answers = {type_name(name)};
    EXPECT_EQ(text(dialogs_.strGetSaveFileName()), path_ + "\\" + name);
    EXPECT_EQ(answers.seen(), std::vector<std::string>{"Save File"}) << "nothing is asked";
  }
  EXPECT_EQ(text(dialogs_.strLastSaveFile()), path_ + "\\a.txt");
}

TEST_F(RealDialogs, NamesOutsideTheCodePageComeBackWithQuestionMarks) {
  ASSERT_EQ(::GetACP(), 1252u);
  const auto name = folder_.path() / L"\u0416\u00E9.txt";
  std::ofstream(name) << "x";
  const Answers answers = {[](const OpenDialog& dialog) {
    ::SendMessageW(dialog.control(file_name, "Edit"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"\u0416\u00E9.txt"));
    dialog.press(ok_button);
  }};
  const String result = dialogs_.strGetOpenFileName();
  EXPECT_TRUE(result.ends_with(u"\\?\u00E9.txt")) << text(result);
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

TEST_F(RealDialogs, AboutBoxNamesTheProgram) {
  std::string product;
  const Answers answers = {[&](const OpenDialog& dialog) {
    product = dialog.text(about_text);
    dialog.press(ok_button);
  }};
  EXPECT_EQ(dialogs_.flngShowAbout(), 1);
  EXPECT_EQ(product, "real_dialogs_tests 0.0.0") << "a program without a version resource";
  EXPECT_EQ(answers.seen().size(), 1u);
}

/// The system's dialogs, behind a run-time error in each of the first calls.
class FailingDialogs final : public Dialogs {
 public:
  int failures = 0;

  std::int32_t desktop_window() override { return native_dialogs().desktop_window(); }
  FileDialogAnswer open_file(const FileDialogRequest& request) override {
    if (failures-- > 0) throw RuntimeError(StandardError::permission_denied);
    return native_dialogs().open_file(request);
  }
  FileDialogAnswer save_file(const FileDialogRequest&) override { return {}; }
  FolderDialogAnswer browse_for_folder(const FolderDialogRequest&) override { return {}; }
  FontDialogAnswer choose_font(const FontDialogRequest&) override { return {}; }
  PrintDialogAnswer print(const PrintDialogRequest&) override { return {}; }
  PageSetupAnswer set_up_page(const PageSetupRequest&) override { return {}; }
  std::int32_t show_about(const AboutRequest&) override { return 0; }
  std::uint32_t extended_error() override { return 0; }
};

TEST_F(RealDialogs, PromptOffersThreeButtons) {
  FailingDialogs failing;
  clsDIALOGS dialogs(failing);
  dialogs.blnUsePersistence(false);
  const auto attempt = [&](std::initializer_list<Answers::Answer> given, int failures, std::size_t boxes) {
    failing.failures = failures;
    dialogs.strInitialDir(dialogs_.strInitialDir());
    const Answers answers = given;
    const String result = dialogs.strGetOpenFileName();
    EXPECT_EQ(answers.seen().size(), boxes);
    EXPECT_EQ(answers.seen()[0], "GET_OPEN_FILE_NAME_ERROR");
    return text(result);
  };
  std::string message;
  const Answers::Answer aborted = [&](const OpenDialog& box) {
    message = box.text(box_text);
    box.press(abort_button);
  };
  EXPECT_EQ(attempt({aborted}, 1, 1), "");
  EXPECT_EQ(message, "Error #:70\r\nPermission denied\r\nN/A");
  EXPECT_EQ(attempt({press(retry_button), press(retry_button), type_name("a.txt")}, 2, 3), path_ + "\\a.txt");
  EXPECT_EQ(attempt({press(ignore_button)}, 1, 1), "");
  EXPECT_EQ(text(dialogs.strDialogError()), "General Codes Failure") << "ignored: the next step ran";
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
