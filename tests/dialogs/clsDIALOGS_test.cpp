// The class as a whole: its defaults, what it remembers, and how it reports failures.
#include "dialogs/clsDIALOGS.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "scripted.h"
#include "support/errors.h"
#include "support/failing_allocations.h"

namespace tornby {
namespace {

using testing::Script;
using testing::ScriptedDialogs;
using testing::shown;
using namespace std::literals;

TEST(clsDIALOGS, NewObjectHasItsDefaults) {
  Script script;
  EXPECT_EQ(script->lngDialogError(), 0);
  EXPECT_EQ(shown(script->strDialogError()), "N/A");
  EXPECT_EQ(script->intRightMargin(), 500);
  EXPECT_EQ(script->intMinMarginTop(), 250);
  EXPECT_EQ(script->lngFontSize(), 10);
  EXPECT_EQ(script->lngFontType(), 1024);
  EXPECT_EQ(script->lngColor(), 12632256);
  const auto colors = script->custom_colors();
  ASSERT_EQ(colors.size(), 17u);
  EXPECT_EQ(std::count(colors.begin(), colors.end(), 0xFFFFFF), 10);
  EXPECT_EQ(colors[2], 0x0000FF) << "red";
  EXPECT_EQ(shown(script->fstrReturnSingleFileName(0) + script->fstrReturnSingleFileName(255)), "");
  EXPECT_EQ(testing::raised_number([&] { script->fstrReturnSingleFileName(-1); }), 9);
  EXPECT_EQ(testing::raised_number([&] { script->fstrReturnSingleFileName(256); }), 9);
}

TEST(clsDIALOGS, ReadsWhatItRemembersAtConstruction) {
  Script script;
  EXPECT_EQ(shown(script.profiles.file), "C:\\WINDOWS\\host.ini");
  EXPECT_EQ(shown(script.profiles.section), "DIALOGS");
  EXPECT_EQ(script.profiles.folder_capacity, 200u);
  EXPECT_EQ(script.profiles.value_capacity, 250u);
  for (const String& folder : {script->strInitialDir(), script->strLastOpenFolder(), script->strLastSaveFolder()})
    EXPECT_EQ(shown(folder), "C:\\App");
  EXPECT_EQ(script->lngLastOpenFilter(), 1);
  EXPECT_EQ(script->lngLastSaveFilter(), 1);
  EXPECT_EQ(shown(script->strLastOpenFile() + script->strLastSaveFile()), "");

  script.object->blnUsePersistence(false);
  script.profiles.windows_folder = u"D:\\";
  script.profiles.values = {{u"InitialDir", u"i"},    {u"LastOpenDir", u"od"}, {u"LastOpenFilter", u"-3"},
                            {u"LastOpenFile", u"of"}, {u"LastSaveDir", u""},   {u"LastSaveFilter", u"4"},
                            {u"LastSaveFile", u"sf"}};
  script.restart();
  EXPECT_EQ(shown(script.profiles.file), "D:\\host.ini");
  EXPECT_EQ(shown(script->strInitialDir()), "i");
  EXPECT_EQ(shown(script->strLastOpenFolder()), "od");
  EXPECT_EQ(script->lngLastOpenFilter(), -3);
  EXPECT_EQ(shown(script->strLastOpenFile()), "of");
  EXPECT_EQ(shown(script->strLastSaveFolder()), "C:\\App") << "an empty value reads as the default";
  EXPECT_EQ(script->lngLastSaveFilter(), 4);
  EXPECT_EQ(shown(script->strLastSaveFile()), "sf");
}

TEST(clsDIALOGS, WritesWhatItRemembersAtDestructionInOrder) {
  Script script;
  script.answer_open("C:\\in\\a.txt\0  "s, 2);
  script.answer_save("C:\\out\\b.txt\0  "s, 3);
  script->strGetOpenFileName();
  script->strGetSaveFileName();
  script->strInitialDir(u"C:\\start");
  EXPECT_TRUE(script.profiles.written.empty());
  script.object.reset();
  const std::vector<std::pair<String, String>> expected = {
      {u"InitialDir", u"C:\\start"},       {u"LastOpenDir", u"C:\\in\\"},  {u"LastOpenFilter", u"2"},
      {u"LastOpenFile", u"C:\\in\\a.txt"}, {u"LastSaveDir", u"C:\\out\\"}, {u"LastSaveFilter", u"3"},
      {u"LastSaveFile", u"C:\\out\\b.txt"}};
  EXPECT_EQ(script.profiles.written, expected);
  EXPECT_EQ(shown(script.profiles.file), "C:\\WINDOWS\\host.ini");

  script.profiles.written.clear();
  script.restart();
  EXPECT_EQ(shown(script->strLastSaveFile()), "C:\\out\\b.txt");
  script->blnUsePersistence(false);
  script.object.reset();
  EXPECT_TRUE(script.profiles.written.empty());
}

TEST(clsDIALOGS, WhatCannotBeWrittenIsForgottenSilently) {
  Script script;
  script.profiles.writable = false;
  script.restart();
  script.profiles.throws = true;
  script.restart();
  script.profiles.windows_folder.clear();
  script.restart();
  EXPECT_EQ(shown(script.profiles.file), "\\host.ini");
  EXPECT_TRUE(script.boxes.shown.empty());
}

const struct {
  std::int32_t code;
  const char* text;
} errors[] = {
    {-1, "Dialog Failure"}, {0, "General Codes Failure"},     {1, "Structure Size Error"},
    {11, "No Hook"},        {12288, "File Name Codes Error"}, {12291, "File Name/Title Buffer Too Small"},
    {13, "Unknown Error"},  {4104, "Unknown Error"},          {65535, "Unknown Error"},
};

TEST(clsDIALOGS, StoresAndShowsEveryFailureAsTheTableSays) {
  Script script;
  script->lngHWnd(77);
  for (const auto& [code, text] : errors) {
    for (const bool show : {true, false}) {
      script->blnShowErrorMessages(show);
      script.boxes.shown.clear();
      script.dialogs.error = static_cast<std::uint32_t>(code);
      EXPECT_EQ(script->strGetOpenFileName(), u"");
      EXPECT_EQ(script->lngDialogError(), code);
      EXPECT_EQ(shown(script->strDialogError()), text);
      ASSERT_EQ(script.boxes.shown.size(), show && code != 0 ? 1u : 0u) << code;
      if (script.boxes.shown.empty()) continue;
      const BoxRequest& box = script.boxes.shown[0];
      EXPECT_EQ(box.owner, 77);
      EXPECT_EQ(shown(box.text), text);
      EXPECT_EQ(shown(box.caption), "DIALOG ERROR");
      EXPECT_EQ(box.buttons, BoxButtons::ok);
      EXPECT_EQ(box.icon, BoxIcon::error);
    }
  }
}

TEST(clsDIALOGS, EveryOperationButTwoReportsItsFailure) {
  const struct {
    void (*run)(clsDIALOGS&);
    bool reports;
  } operations[] = {
      {[](clsDIALOGS& d) { EXPECT_EQ(d.strGetOpenFileName(), u""); }, true},
      {[](clsDIALOGS& d) { EXPECT_EQ(d.strGetSaveFileName(), u""); }, true},
      {[](clsDIALOGS& d) { EXPECT_FALSE(d.blnChooseFont()); }, true},
      {[](clsDIALOGS& d) { EXPECT_FALSE(d.blnPageSetup()); }, true},
      {[](clsDIALOGS& d) { EXPECT_FALSE(d.blnPrintDialog()); }, true},
      {[](clsDIALOGS& d) { EXPECT_EQ(d.fstrBrowseForFolder(1), u""); }, false},
      {[](clsDIALOGS& d) { EXPECT_EQ(d.flngShowAbout(), 1); }, false},
  };
  int number = 0;
  for (const auto& [run, reports] : operations) {
    Script script;
    script.dialogs.error = 2;
    run(*script.object);
    EXPECT_EQ(script->lngDialogError(), reports ? 2 : 0) << number;
    EXPECT_EQ(script.boxes.shown.size(), reports ? 1u : 0u) << number++;
  }
}

/// The operations that ask what to do about a run-time error.
const struct Asking {
  const char* caption;
  void (*accept)(ScriptedDialogs&);
  bool (*run)(clsDIALOGS&);  // whether the result is that of a success
} asking[] = {
    {"GET_OPEN_FILE_NAME_ERROR",
     [](ScriptedDialogs& d) {
       d.opened = {1, "C:\\d\\a\0"s, 1};
     },
     [](clsDIALOGS& d) { return !d.strGetOpenFileName().empty(); }},
    {"GET_SAVE_FILE_NAME_ERROR",
     [](ScriptedDialogs& d) {
       d.saved = {1, "C:\\d\\a\0"s, 1};
     },
     [](clsDIALOGS& d) { return !d.strGetSaveFileName().empty(); }},
    {"CHOOSE_FONT_ERROR", [](ScriptedDialogs& d) { d.font_chosen.result = 1; },
     [](clsDIALOGS& d) { return d.blnChooseFont(); }},
};

TEST(clsDIALOGS, AsksWhatToDoAboutARunTimeError) {
  for (const Asking& operation : asking) {
    Script script;
    operation.accept(script.dialogs);
    script.dialogs.before_call = [&] { throw RuntimeError(StandardError::permission_denied); };
    script->lngHWnd(77);
    EXPECT_FALSE(operation.run(*script.object));
    ASSERT_EQ(script.boxes.shown.size(), 1u);
    const BoxRequest& box = script.boxes.shown[0];
    EXPECT_EQ(box.owner, 77);
    EXPECT_EQ(shown(box.caption), operation.caption);
    EXPECT_EQ(shown(box.text), "Error #:70\r\nPermission denied\r\nN/A");
    EXPECT_EQ(box.buttons, BoxButtons::abort_retry_ignore);
    EXPECT_EQ(box.icon, BoxIcon::error);
  }
}

TEST(clsDIALOGS, AbortEndsRetryRepeatsIgnoreGoesOn) {
  for (const Asking& operation : asking) {
    const auto attempt = [&](std::deque<BoxAnswer> answers, int failures, Script& script) {
      operation.accept(script.dialogs);
      script.boxes.answers = std::move(answers);
      script.dialogs.before_call = [&script, failures] {
        if (script.dialogs.calls <= failures) throw std::bad_alloc();
      };
      return operation.run(*script.object);
    };
    for (const BoxAnswer ending : {BoxAnswer::abort, BoxAnswer::cancel, BoxAnswer::none}) {
      Script script;
      EXPECT_FALSE(attempt({ending}, 9, script));
      EXPECT_EQ(script.dialogs.calls, 1);
      EXPECT_EQ(shown(script->strDialogError()), "N/A") << "the next step did not run";
      EXPECT_EQ(shown(script.boxes.shown[0].text), "Error #:7\r\nOut of memory\r\nN/A");
    }
    Script retried;
    EXPECT_TRUE(attempt({BoxAnswer::retry, BoxAnswer::retry}, 2, retried));
    EXPECT_EQ(retried.dialogs.calls, 3);
    Script ignored;
    EXPECT_FALSE(attempt({BoxAnswer::ignore}, 9, ignored));
    EXPECT_EQ(ignored.dialogs.calls, 1);
    EXPECT_EQ(shown(ignored->strDialogError()), "General Codes Failure") << "no answer counts as a cancel";
  }
}

/// Windows-1252, but the first text that a dialog gives cannot be taken in for want of memory.
class FailingCodePage final : public AnsiCodePage {
 public:
  using AnsiCodePage::decode;
  using AnsiCodePage::encode;
  unsigned identifier() const override { return 1252; }
  std::size_t bytes_per_unit() const override { return 1; }
  std::size_t encode(StringView text, std::uint8_t* out) const override { return windows_1252().encode(text, out); }
  std::size_t decode(ByteView bytes, char16_t* out) const override {
    if (!std::exchange(failed_, true)) throw std::bad_alloc();
    return windows_1252().decode(bytes, out);
  }
  unsigned code_of(char16_t character) const override { return windows_1252().code_of(character); }

 private:
  mutable bool failed_ = false;
};

TEST(clsDIALOGS, OnlyTheFailingStepIsRepeatedOrSkipped) {
  const struct {
    BoxAnswer answer;
    const char* result;
    const char* folder;  // of the last open
    std::int32_t filter;
    const char* initial_folder;
  } cases[] = {
      {BoxAnswer::retry, "C:\\d\\a", "C:\\d\\", 5, "C:\\d\\"},
      {BoxAnswer::ignore, "", "C:\\App", 5, "C:\\App"},
      {BoxAnswer::abort, "", "C:\\App", 1, "C:\\start"},
  };
  for (const auto& [answer, result, folder, filter, initial_folder] : cases) {
    Script script;
    const FailingCodePage code_page;
    clsDIALOGS dialogs(script.dialogs, script.boxes, script.profiles, script.module, code_page);
    script.answer_open("C:\\d\\a\0"s, 5);
    script.boxes.answers = {answer};
    dialogs.strInitialDir(u"C:\\start");
    EXPECT_EQ(shown(dialogs.strGetOpenFileName()), result);
    EXPECT_EQ(script.dialogs.calls, 1) << "the dialog is not shown again";
    EXPECT_EQ(script.boxes.shown.size(), 1u);
    EXPECT_EQ(shown(dialogs.strLastOpenFolder()), folder);
    EXPECT_EQ(dialogs.lngLastOpenFilter(), filter);
    EXPECT_EQ(shown(dialogs.strInitialDir()), initial_folder);
  }
}

TEST(clsDIALOGS, WithoutMessagesARunTimeErrorEndsTheOperation) {
  for (const Asking& operation : asking) {
    Script script;
    operation.accept(script.dialogs);
    script->blnShowErrorMessages(false);
    script.dialogs.before_call = [] { throw std::length_error("too long"); };
    EXPECT_FALSE(operation.run(*script.object));
    EXPECT_EQ(script.dialogs.calls, 1);
    EXPECT_TRUE(script.boxes.shown.empty());
    EXPECT_EQ(shown(script->strDialogError()), "N/A");
  }
}

TEST(clsDIALOGS, IgnoringAFailedPartOfTheRequestLeavesTheOthers) {
  Script script;
  script.answer_open("C:\\d\\a\0"s);
  script->lngMaxFileNameBuffer(-1);
  script->lngHWnd(77);
  script->strFilter(u"a|b");
  script->strTitle(u"title");
  script.boxes.answers = {BoxAnswer::ignore};
  EXPECT_EQ(script->strGetOpenFileName(), u"C:\\d\\a");
  EXPECT_EQ(shown(script.boxes.shown[0].text), "Error #:5\r\nInvalid procedure call or argument\r\nN/A");
  const FileDialogRequest& request = script.dialogs.opening;
  EXPECT_EQ(request.file_length, 0u);
  EXPECT_EQ(request.owner, 77);
  EXPECT_EQ(request.filter, "a\0b\0\0"s);
  EXPECT_EQ(request.caption, "title");
  EXPECT_EQ(request.initial_folder, "C:\\App");
  EXPECT_EQ(request.flags, 0x8140Cu);
}

TEST(clsDIALOGS, WhateverAllocationFailsTheChoiceIsTakenWholeOrNotAtAll) {
  const std::string long_name(40, 'n');
  for (const bool saves : {false, true}) {
    for (const bool several : {false, true}) {
      EXPECT_GT(testing::fail_each_allocation([&](testing::AllocationFailure& failure) {
                  Script script;
                  script->blnShowErrorMessages(false);
                  script->blnAllowMultipleFileSelect(several);
                  std::string answer = "C:\\a folder of some length\\" + long_name + '\0';
                  if (several) answer += "one\0another\0\0"s;
                  saves ? script.answer_save(answer) : script.answer_open(answer);
                  String result;
                  try {
                    result = failure.during(
                        [&] { return saves ? script->strGetSaveFileName() : script->strGetOpenFileName(); });
                  } catch (const std::bad_alloc&) {
                    ADD_FAILURE() << "this is for the prompt";
                  }
                  const String& file = saves ? script->strLastSaveFile() : script->strLastOpenFile();
                  const String& folder = saves ? script->strLastSaveFolder() : script->strLastOpenFolder();
                  EXPECT_EQ(folder == u"C:\\App", file.empty());
                  EXPECT_EQ(script->lngNumFilesSelected(), several && !saves && !file.empty() ? 2 : 0);
                  EXPECT_TRUE(failure.happened() || !result.empty());
                }),
                0u);
    }
  }
}

TEST(clsDIALOGS, WhateverAllocationFailsNothingWrongIsRemembered) {
  const String start = u"C:\\a folder of some length";
  EXPECT_GT(testing::fail_each_allocation([&](testing::AllocationFailure& failure) {
              Script script;
              script->strInitialDir(start);
              script.profiles.written.reserve(7);
              failure.during([&] { script.object.reset(); });
              for (const auto& [key, value] : script.profiles.written)
                EXPECT_EQ(value, key == u"InitialDir"     ? start
                                 : key.ends_with(u"Dir")  ? u"C:\\App"
                                 : key.ends_with(u"File") ? u""
                                                          : u"1");
              EXPECT_TRUE(failure.happened() || script.profiles.written.size() == 7);
            }),
            0u);
}

TEST(clsDIALOGS, OtherOperationsPassRunTimeErrorsOn) {
  Script script;
  script.dialogs.before_call = [] { throw RuntimeError(StandardError::permission_denied); };
  EXPECT_EQ(testing::raised_number([&] { script->blnPrintDialog(); }), 70);
  EXPECT_EQ(testing::raised_number([&] { script->fstrBrowseForFolder(0); }), 70);
  EXPECT_TRUE(script.boxes.shown.empty());
}

#ifndef _WIN32
TEST(clsDIALOGS, WithoutSystemDialogsEveryOperationCountsAsCancelled) {
  clsDIALOGS dialogs;
  EXPECT_EQ(dialogs.strGetOpenFileName(), u"");
  EXPECT_EQ(dialogs.strGetSaveFileName(), u"");
  EXPECT_EQ(dialogs.fstrBrowseForFolder(0), u"");
  EXPECT_FALSE(dialogs.blnChooseFont() || dialogs.blnPageSetup() || dialogs.blnPrintDialog());
  EXPECT_EQ(dialogs.flngShowAbout(), 0);
  EXPECT_EQ(dialogs.lngDialogError(), 0);
  EXPECT_FALSE(dialogs.strInitialDir().empty()) << "the program's folder";
}
#endif

}  // namespace
}  // namespace tornby
