// Open, save and folder: what the dialogs are asked, and what is made of their answers.
#include <gtest/gtest.h>

#include "scripted.h"

namespace tornby {
namespace {

using testing::Script;
using testing::shown;
using namespace std::literals;

TEST(FileDialogs, FilterIsConvertedAndPassedUnchanged) {
  const struct {
    String list;
    std::string converted;
  } cases[] = {
      {u"Text|*.txt|All|*.*", "Text\0*.txt\0All\0*.*\0\0"s},
      {u"Text|*.txt|", "Text\0*.txt\0\0\0"s},
      {u"Text|*.txt||", "Text\0*.txt\0\0"s},
      {String(u"Text\0*.txt\0\0", 12), "Text\0*.txt\0\0"s},
      {u"", "\0\0"s},
      {u"|", "\0\0\0"s},
      {u"\u20AC \u0416|*.\u00E9", "\x80 ?\0*.\xE9\0\0"s},
  };
  Script script;
  script->strGetOpenFileName();
  EXPECT_EQ(script.dialogs.opening.filter, "");
  for (const auto& [list, converted] : cases) {
    script->strFilter(list);
    script->strGetOpenFileName();
    script->strGetSaveFileName();
    EXPECT_EQ(script.dialogs.opening.filter, converted);
    EXPECT_EQ(script.dialogs.saving.filter, converted);
  }
}

std::string buffer_of(std::size_t length) {
  std::string buffer(length + 2, ' ');
  buffer.front() = buffer.back() = '\0';
  return buffer;
}

TEST(FileDialogs, OpenIsAskedFieldByField) {
  Script script;
  script.object.reset();
  script.profiles.values[u"LastOpenFilter"] = u"3";
  script.restart();
  script->lngHWnd(-5);
  script->strGetOpenFileName(u"not used");
  const FileDialogRequest& request = script.dialogs.opening;
  EXPECT_EQ(request.structure_size, 76u);
  EXPECT_EQ(request.owner, -5);
  EXPECT_EQ(request.filter_index, 3);
  EXPECT_EQ(request.file, buffer_of(250));
  EXPECT_EQ(request.title, buffer_of(250));
  EXPECT_EQ(request.file_length, 252u);
  EXPECT_EQ(request.title_length, 252u);
  EXPECT_EQ(request.initial_folder, "C:\\App");
  EXPECT_EQ(request.caption, "Select File To Open");
  EXPECT_EQ(request.flags, 0x8140Cu);

  script->strTitle(u"\u00C9 \u0416");
  script->strInitialDir(u"C:\\start");
  script->blnAllowMultipleFileSelect(true);
  script->strDefaultExt(u"txt");
  script->blnCreatePrompt(true);
  script->strGetOpenFileName();
  EXPECT_EQ(request.caption, "\xC9 ?");
  EXPECT_EQ(request.initial_folder, "C:\\start");
  EXPECT_EQ(request.flags, 0x8160Cu);
}

TEST(FileDialogs, NameBuffersHaveTheStatedLengths) {
  const struct {
    bool multiple;
    std::int32_t length;
    std::size_t opening, saving;
  } cases[] = {
      {false, 0, 2, 2},         {false, 250, 252, 252},   {false, 4000, 4002, 4002}, {true, 250, 2050, 252},
      {true, 2047, 2050, 2049}, {true, 4000, 4002, 4002}, {true, -1, 2050, 0},
  };
  for (const auto& [multiple, length, opening, saving] : cases) {
    Script script;
    script->blnShowErrorMessages(false);
    script->blnAllowMultipleFileSelect(multiple);
    script->lngMaxFileNameBuffer(length);
    script->strGetOpenFileName();
    EXPECT_EQ(script.dialogs.opening.file.size(), opening);
    EXPECT_EQ(script.dialogs.opening.file_length, opening);
    EXPECT_EQ(script.dialogs.opening.title_length, opening);
    script->strGetSaveFileName();
    EXPECT_EQ(script.dialogs.saving.file.size(), saving);
    EXPECT_EQ(script.dialogs.saving.file_length, static_cast<std::uint32_t>(std::max(length, 0)));
    EXPECT_EQ(script.dialogs.saving.title_length, script.dialogs.saving.file_length);
  }
}

/// What an open dialog's buffer is made of.
struct Opened {
  bool multiple;
  std::string buffer;
  const char* result;
  const char* folder;
  const char* file;
  std::int32_t count;
};

class OpenAnswer : public ::testing::TestWithParam<Opened> {};

TEST_P(OpenAnswer, IsTakenApart) {
  const Opened& opened = GetParam();
  Script script;
  script->blnAllowMultipleFileSelect(opened.multiple);
  script.answer_open(opened.buffer, 4);
  EXPECT_EQ(shown(script->strGetOpenFileName()), opened.result);
  EXPECT_EQ(shown(script->strLastOpenFolder()), opened.folder);
  EXPECT_EQ(script->strInitialDir(), script->strLastOpenFolder());
  EXPECT_EQ(shown(script->strLastOpenFile()), opened.file);
  EXPECT_EQ(script->lngNumFilesSelected(), opened.count);
  EXPECT_EQ(script->lngLastOpenFilter(), 4);
  EXPECT_EQ(script->lngDialogError(), 0);
  EXPECT_EQ(shown(script->strDialogError()), "N/A");
}

INSTANTIATE_TEST_SUITE_P(
    Buffers, OpenAnswer,
    ::testing::Values(Opened{false, "C:\\d\\a.txt\0   \0"s, "C:\\d\\a.txt", "C:\\d\\", "C:\\d\\a.txt", 0},
                      Opened{false, "C:\\a.txt", "C:\\a.txt", "C:\\", "C:\\a.txt", 0},
                      Opened{false, "bare\0"s, "bare", "", "bare", 0},
                      Opened{false, "C:\\d\0a\0b\0\0"s, "C:\\d", "C:\\", "C:\\d", 0},
                      Opened{false, "C:\\\xE9?\0"s, "C:\\#?", "C:\\", "C:\\#?", 0},
                      Opened{true, "C:\\d\\a.txt\0\0  \0"s, "C:\\d\\a.txt", "C:\\d\\", "a.txt", 1},
                      Opened{true, "C:\\d\\a.txt\0   \0"s, "C:\\d\\a.txt", "C:\\d\\", "a.txt", 1},
                      Opened{true, "C:\\d\0a\0bb\0c\0\0  \0"s, "a|bb|c||", "C:\\d\\", "a|bb|c||", 3},
                      Opened{true, "C:\\\0a\0bb\0\0"s, "a|bb||", "C:\\", "a|bb||", 2},
                      Opened{true, "C:\\d\0e\\a\0e\\bb\0\0"s, "e\\a|e\\bb||", "C:\\d\\", "bb||", 2},
                      Opened{true, "C:\\d\0a\0bb\0c"s, "C:\\d", "C:\\", "d", 1},  // cut off
                      Opened{true, "C:\\d\0a\0"s, "C:\\d", "C:\\", "d", 1}, Opened{true, "\0\0"s, "", "", "", 0},
                      Opened{true, "\0a\0\0"s, "", "", "", 1}, Opened{true, ""s, "", "", "", 1}));

TEST(FileDialogs, SeveralFilesFillTheListAndLeaveTheRest) {
  Script script;
  script->blnAllowMultipleFileSelect(true);
  script.answer_open("C:\\d\0a\0bb\0c\0\0"s);
  script->strGetOpenFileName();
  EXPECT_EQ(shown(script->fstrReturnSingleFileName(0)), "C:\\d\\a");
  EXPECT_EQ(shown(script->fstrReturnSingleFileName(2)), "C:\\d\\c");
  EXPECT_EQ(shown(script->fstrReturnSingleFileName(3)), "");
  script.answer_open("C:\\\0x\0y\0\0"s);
  script->strGetOpenFileName();
  EXPECT_EQ(shown(script->fstrReturnSingleFileName(1)), "C:\\y");
  EXPECT_EQ(shown(script->fstrReturnSingleFileName(2)), "C:\\d\\c") << "kept";
  script.answer_open("C:\\e\\one\0\0"s);
  script->strGetOpenFileName();
  EXPECT_EQ(shown(script->fstrReturnSingleFileName(0)), "C:\\x") << "one file does not go into the list";
}

TEST(FileDialogs, MoreFilesThanTheListHolds) {
  for (const int count : {256, 257, 4000}) {
    Script script;
    script->blnAllowMultipleFileSelect(true);
    script->lngMaxFileNameBuffer(32000);
    std::string names;
    for (int i = 0; i < count; ++i) names.append("f").append(std::to_string(10000 + i)).append(1, '\0');
    script.answer_open("C:\\d\0"s.append(names).append(1, '\0'));
    const String result = script->strGetOpenFileName();
    EXPECT_EQ(script.dialogs.opening.file_length, 32002u);
    EXPECT_EQ(result.size(), names.size() + 1);
    EXPECT_EQ(script->lngNumFilesSelected(), count);
    EXPECT_EQ(shown(script->fstrReturnSingleFileName(255)), "C:\\d\\f10255");
    EXPECT_TRUE(script.boxes.shown.empty());
  }
}

TEST(FileDialogs, CancelledOpenKeepsAllButTheInitialFolder) {
  Script script;
  script->blnAllowMultipleFileSelect(true);
  script.answer_open("C:\\d\0a\0b\0\0"s, 2);
  script->strGetOpenFileName();
  script->strInitialDir(u"C:\\elsewhere");
  script.dialogs.opened = {0, "C:\\x\\y\0\0"s, 9};
  EXPECT_EQ(script->strGetOpenFileName(), u"");
  EXPECT_EQ(script.dialogs.opening.filter_index, 2);
  EXPECT_EQ(shown(script->strLastOpenFile()), "a|b||");
  EXPECT_EQ(script->lngLastOpenFilter(), 2);
  EXPECT_EQ(script->lngNumFilesSelected(), 0);
  EXPECT_EQ(shown(script->strInitialDir()), "C:\\d\\");
  EXPECT_EQ(shown(script->strDialogError()), "General Codes Failure");
  script->strInitialDir(u"");
  script->strGetOpenFileName();
  EXPECT_EQ(script.dialogs.opening.initial_folder, "C:\\d\\") << "the last folder stands in";
}

TEST(FileDialogs, SaveIsAskedAndAnswered) {
  Script script;
  script->strInitialDir(u"");
  script->blnAllowMultipleFileSelect(true);  // without effect here
  script->lngMaxFileNameBuffer(300);
  EXPECT_EQ(script->strGetSaveFileName(u"not used"), u"");
  const FileDialogRequest& request = script.dialogs.saving;
  EXPECT_EQ(request.structure_size, 76u);
  EXPECT_EQ(request.owner, 0x10010);
  EXPECT_EQ(request.filter_index, 1);
  EXPECT_EQ(request.file, buffer_of(300));
  EXPECT_EQ(request.title, buffer_of(300));
  EXPECT_EQ(request.file_length, 300u);
  EXPECT_EQ(request.initial_folder, "C:\\App");
  EXPECT_EQ(request.caption, "Save File");
  EXPECT_EQ(request.flags, 0x8040Cu);
  EXPECT_EQ(shown(script->strInitialDir()), "C:\\App");

  script->blnCreatePrompt(true);
  script->strTitle(u"Keep");
  script.answer_save("C:\\d\\a.txt\0   \0"s, 3);
  EXPECT_EQ(script->strGetSaveFileName(), u"C:\\d\\a.txt");
  EXPECT_EQ(request.flags, 0x8240Cu);
  EXPECT_EQ(request.caption, "Keep");
  EXPECT_EQ(shown(script->strLastSaveFile()), "C:\\d\\a.txt");
  EXPECT_EQ(shown(script->strLastSaveFolder()), "C:\\d\\");
  EXPECT_EQ(shown(script->strInitialDir()), "C:\\d\\");
  EXPECT_EQ(script->lngLastSaveFilter(), 3);
  EXPECT_EQ(script->lngLastOpenFilter(), 1);
  EXPECT_EQ(shown(script->strLastOpenFolder()), "C:\\App");
}

TEST(FileDialogs, FolderIsAskedAndAnswered) {
  Script script;
  script->strTitle(u"ignored");
  EXPECT_EQ(script->fstrBrowseForFolder(9), u"");
  EXPECT_EQ(script.dialogs.folder.owner, 9);
  EXPECT_EQ(script.dialogs.folder.instruction, "Select Folder");
  EXPECT_EQ(script.dialogs.folder.flags, 1u);
  script.dialogs.folder_chosen = {true, "C:\\d\\\xE9" + std::string(250, '\0')};
  EXPECT_EQ(script->fstrBrowseForFolder(0), u"C:\\d\\\u00E9");
  EXPECT_EQ(shown(script->strInitialDir()), "C:\\App");
  EXPECT_EQ(shown(script->strDialogError()), "N/A");
}

}  // namespace
}  // namespace tornby
