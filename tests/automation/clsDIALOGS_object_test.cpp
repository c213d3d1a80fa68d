#include <gtest/gtest.h>

#include <filesystem>

#include "dialogs/answering.h"
#include "platform/profile.h"
#include "server.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::Bstr;
using testing::Server;

/// Objects of this class remember their last choices in the Windows folder; these tests leave nothing there.
class NothingRemembered final : public ::testing::Environment {
 public:
  void SetUp() override { std::filesystem::remove(file()); }
  void TearDown() override { std::filesystem::remove(file()); }

  static std::filesystem::path file() {
    return std::filesystem::path(native_profile_files().folder(200)) / "tornby.ini";
  }
};
const auto* const nothing_remembered = ::testing::AddGlobalTestEnvironment(new NothingRemembered);

std::wstring text(BSTR value) {
  const std::wstring copy(value, ::SysStringLen(value));
  ::SysFreeString(value);
  return copy;
}

TEST(DialogsObject, RunsARealDialogAndRemembersAtTheEnd) {
  std::filesystem::remove(NothingRemembered::file());
  const testing::TemporaryFolder folder;
  folder.write("a.txt", "x");
  folder.write("bb.txt", "x");
  const Server server;
  {
    const auto dialogs = server.create<IclsDIALOGS>(CLSID_clsDIALOGS);
    ASSERT_EQ(dialogs->put_blnAllowMultipleFileSelect(VARIANT_TRUE), S_OK);
    ASSERT_EQ(dialogs->put_strInitialDir(Bstr(folder.path().wstring().c_str())), S_OK);
    const testing::Answers answers = {[](const testing::OpenDialog& dialog) {
      dialog.type(1148, "\"bb.txt\" \"a.txt\"", "Edit");
      dialog.press(testing::ok_button);
    }};
    BSTR names = nullptr;
    ASSERT_EQ(dialogs->strGetOpenFileName(nullptr, &names), S_OK);
    EXPECT_EQ(text(names), std::wstring(L"bb.txt\0a.txt\0\0", 14));
    LONG count = 0;
    ASSERT_EQ(dialogs->get_lngNumFilesSelected(&count), S_OK);
    EXPECT_EQ(count, 2);
    BSTR second = nullptr;
    ASSERT_EQ(dialogs->fstrReturnSingleFileName(1, &second), S_OK);
    EXPECT_EQ(std::filesystem::path(text(second)).filename(), L"a.txt");
    EXPECT_FALSE(std::filesystem::exists(NothingRemembered::file()));
  }
  EXPECT_TRUE(std::filesystem::exists(NothingRemembered::file())) << "named after the DLL";
  const auto again = server.create<IclsDIALOGS>(CLSID_clsDIALOGS);
  BSTR last = nullptr;
  ASSERT_EQ(again->get_strLastOpenFolder(&last), S_OK);
  EXPECT_EQ(std::filesystem::path(text(last)).parent_path().filename(), folder.path().filename());
}

TEST(DialogsObject, AboutBoxShowsTheLibrary) {
  const Server server;
  const auto dialogs = server.create<IclsDIALOGS>(CLSID_clsDIALOGS);
  std::string product, copyright;
  const testing::Answers answers = {[&](const testing::OpenDialog& dialog) {
    product = dialog.text(100);
    copyright = dialog.text(101);
    dialog.press(testing::ok_button);
  }};
  LONG result = 0;
  ASSERT_EQ(dialogs->flngShowAbout(&result), S_OK);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(product, "Tornby 0.1.0");
  EXPECT_EQ(copyright, "Copyright (c) 2026 the Tornby authors");
}

}  // namespace
}  // namespace tornby
