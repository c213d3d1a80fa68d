// The real initialisation file: what one run remembers the next one uses, and what cannot be remembered hurts nobody.
#include <gtest/gtest.h>

#include <windows.h>

#include "dialogs/clsDIALOGS.h"
#include "real_dialogs.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::TemporaryFolder;
using testing::text;

/// The system's initialisation files, in a folder of the test's own instead of the Windows folder.
class ProfilesIn final : public ProfileFiles {
 public:
  explicit ProfilesIn(const std::filesystem::path& place) : place_(place.u16string()) {}

  String folder(std::size_t) override { return place_; }
  String read_text(StringView file, StringView section, StringView key, std::size_t capacity) override {
    return native_profile_files().read_text(file, section, key, capacity);
  }
  std::int32_t read_number(StringView file, StringView section, StringView key, std::int32_t otherwise) override {
    return native_profile_files().read_number(file, section, key, otherwise);
  }
  bool write_text(StringView file, StringView section, StringView key, StringView value) override {
    return native_profile_files().write_text(file, section, key, value);
  }

 private:
  String place_;
};

std::filesystem::path program_folder() {
  char path[MAX_PATH] = {};
  ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path();
}

TEST(Profile, FileHasTheSectionAndTheKeysInOrder) {
  const TemporaryFolder folder;
  ProfilesIn profiles(folder.path());
  {
    clsDIALOGS dialogs(native_dialogs(), native_message_boxes(), profiles);
    dialogs.strInitialDir(u"C:\\\u00C9\r\nLastOpenDir=elsewhere\n[other]");
  }
  const std::string own = program_folder().string();
  EXPECT_EQ(folder.read("real_dialogs_tests.ini"), "[DIALOGS]\r\nInitialDir=C:\\\xC9\r\nLastOpenDir=" + own +
                                                       "\r\nLastOpenFilter=1\r\nLastOpenFile=\r\nLastSaveDir=" + own +
                                                       "\r\nLastSaveFilter=1\r\nLastSaveFile=\r\n");
}

TEST(Profile, LongAndEmptyValues) {
  const TemporaryFolder folder;
  folder.write("real_dialogs_tests.ini", "[dialogs]\r\nINITIALDIR=" + std::string(300, 'x') +
                                             "\r\nLastOpenDir=\r\nLastOpenFilter=abc\r\nLastSaveFile=\"q\"\r\n");
  ProfilesIn profiles(folder.path());
  clsDIALOGS dialogs(native_dialogs(), native_message_boxes(), profiles);
  EXPECT_EQ(text(dialogs.strInitialDir()), std::string(249, 'x'));
  EXPECT_EQ(text(dialogs.strLastOpenFolder()), program_folder().string());
  EXPECT_EQ(dialogs.lngLastOpenFilter(), 0);
  EXPECT_EQ(dialogs.lngLastSaveFilter(), 1);
  EXPECT_EQ(text(dialogs.strLastSaveFile()), "q");
  dialogs.blnUsePersistence(false);
}

TEST(Profile, AFolderThatCannotBeWrittenHurtsNobody) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path() / "real_dialogs_tests.ini");  // in the file's place
  for (const auto& place : {folder.path() / "missing", folder.path()}) {
    ProfilesIn profiles(place);
    clsDIALOGS dialogs(native_dialogs(), native_message_boxes(), profiles);
    EXPECT_EQ(text(dialogs.strInitialDir()), program_folder().string());
  }
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "missing"));
}

TEST(Module, KnowsItsFile) {
  EXPECT_EQ(text(native_module().name()), "real_dialogs_tests");
  EXPECT_EQ(text(native_module().folder()), program_folder().string());
  const ModuleVersion version = native_module().version();
  EXPECT_EQ(text(version.product_name), "real_dialogs_tests");
  EXPECT_TRUE(version.copyright.empty());
}

}  // namespace
}  // namespace tornby
