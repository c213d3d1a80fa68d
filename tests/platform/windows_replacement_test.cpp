// What only this system can show of saving: attributes, shared files, devices.
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "checksums/clsApi.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

bool save(const String& name) {
  return clsApi().apiSaveFile(name, u"new");
}

TEST(WindowsReplacement, KeepsTheAttributes) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const std::string narrow = (folder.path() / "text.txt").string();
  for (const DWORD attribute : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
    ::SetFileAttributesA(narrow.c_str(), attribute);
    const DWORD before = ::GetFileAttributesA(narrow.c_str());
    ASSERT_TRUE(save(name));
    EXPECT_EQ(folder.read("text.txt"), "new\r\n");
    EXPECT_EQ(::GetFileAttributesA(narrow.c_str()) & attribute, before & attribute);
  }
}

TEST(WindowsReplacement, ReadOnlyFileIsRefused) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const std::string narrow = (folder.path() / "text.txt").string();
  ::SetFileAttributesA(narrow.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(save(name));
  EXPECT_EQ(folder.read("text.txt"), "earlier");
  EXPECT_EQ(::GetFileAttributesA((narrow + ".saving~").c_str()), INVALID_FILE_ATTRIBUTES);
  ::SetFileAttributesA(narrow.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(WindowsReplacement, FileThatAnotherProgramHoldsIsLeftWhole) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  {
    const std::ifstream holder(folder.path() / "text.txt");
    EXPECT_FALSE(save(name));
  }
  EXPECT_EQ(folder.read("text.txt"), "earlier");
  EXPECT_EQ(::GetFileAttributesA((folder.path() / "text.txt.saving~").string().c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_TRUE(save(name));
}

TEST(WindowsReplacement, WritesDevicesWithoutReplacingThem) {
  EXPECT_TRUE(save(u"NUL"));
}

}  // namespace
}  // namespace tornby
