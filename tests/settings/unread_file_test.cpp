// A settings file that could not be read is not lost to the next save.
#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "settings/XML_Settings.h"
#include "support/failing_allocations.h"
#include "support/forwarding_files.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

class LockedFiles : public testing::ForwardingFiles {
 public:
  std::unique_ptr<InputFile> open_for_reading(StringView) const override {
    throw RuntimeError(StandardError::permission_denied);
  }
};
class StuckFiles final : public LockedFiles {
 public:
  void set_aside(StringView) const override { throw RuntimeError(StandardError::permission_denied); }
};

TEST(UnreadFile, IsSetAsideOnceAndOverwritesNothing) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("a.txt", "precious");
  folder.write("a.txt.unread~", "another");
  const LockedFiles files;
  XML_Settings settings(native_code_page(), files);
  settings.FileName(name);
  EXPECT_EQ(settings.GetContents(), u"");
  settings.UpdateRecent(u"x");
  settings.SaveSetting(u"A", u"K", u"V");
  settings.Save();
  EXPECT_EQ(folder.read("a.txt.unread~"), "another");
  EXPECT_EQ(folder.read("a.txt.unread~2"), "precious");
  EXPECT_EQ(folder.read("a.txt"), "<RECENTFILES>\r\n<FILE>x</FILE>\r\n</RECENTFILES>\r\n<A>\r\n<K>V</K>\r\n</A>\r\n");
  EXPECT_EQ(folder.read("a.txt.unread~3"), "");
}

TEST(UnreadFile, StaysWhereItIsWhenItCannotBeMoved) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("a.txt", "precious");
  const StuckFiles files;
  XML_Settings settings(native_code_page(), files);
  settings.FileName(name);
  settings.Save();
  EXPECT_EQ(folder.read("a.txt"), "precious");
  settings.FileName(folder.name_of("none.txt"));
  settings.SetContents(u"x");
  settings.Save();
  EXPECT_EQ(folder.read("none.txt"), "x\r\n") << "nothing was there to be lost";
  XML_Settings folders;
  folders.FileName(folder.path().u16string());
  folders.Save();
  EXPECT_EQ(folder.read("a.txt"), "precious") << "a folder of that name stays";
}

TEST(UnreadFile, WhateverAllocationFailsWhatTheUserHadIsStillThere) {
  const std::string kept =
      "<OPTIONS>\r\n<A KEY OF SOME LENGTH>a value of some length</A KEY OF SOME LENGTH>\r\n</OPTIONS>";
  const auto holds_it = [&](const testing::TemporaryFolder& folder, const char* file) {
    return folder.read(file).find(kept) != std::string::npos;
  };
  EXPECT_GT(testing::fail_each_allocation([&](testing::AllocationFailure& failure) {
              const testing::TemporaryFolder folder;
              const String name = folder.write("a.txt", kept);
              failure.during([&] {
                try {
                  XML_Settings settings;
                  settings.FileName(name);
                  settings.SaveSetting(u"ANOTHER", u"KEY", u"V");
                  settings.UpdateRecent(u"a path that takes an allocation");
                  settings.Save();
                } catch (const std::exception&) {
                }
              });
              EXPECT_TRUE(holds_it(folder, "a.txt") || holds_it(folder, "a.txt.unread~"));
              EXPECT_EQ(folder.read("a.txt.saving~"), "");
              EXPECT_TRUE(failure.happened() || folder.read("a.txt").find("ANOTHER") != std::string::npos);
            }),
            0u);
}

}  // namespace
}  // namespace tornby
