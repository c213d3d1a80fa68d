#include <gtest/gtest.h>

#include <filesystem>

#include "platform/files.h"
#include "support/errors.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

namespace fs = std::filesystem;
using testing::raised_number;

const Bytes text = {'n', 'e', 'w'};

TEST(Replacement, TakesThePlaceOnlyWhenCommitted) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  {
    const auto dropped = native_files().replace(name);
    dropped->write(0, text);
  }
  EXPECT_EQ(folder.read("text.txt"), "earlier");
  EXPECT_FALSE(fs::exists(folder.path() / "text.txt.saving~"));

  const auto kept = native_files().replace(name);
  kept->write(1, text);
  kept->write(0, text);
  EXPECT_EQ(kept->size(), 4u);
  kept->resize(3);
  kept->flush();
  EXPECT_EQ(folder.read("text.txt"), "earlier");
  kept->commit();
  EXPECT_EQ(folder.read("text.txt"), "new");
  EXPECT_FALSE(fs::exists(folder.path() / "text.txt.saving~"));
}

TEST(Replacement, RemovesWhatADeadProcessLeft) {
  const testing::TemporaryFolder folder;
  const String name = folder.name_of("text.txt");
  folder.write("text.txt.saving~", "a long text that was never finished");
  const auto file = native_files().replace(name);
  file->write(0, text);
  file->commit();
  EXPECT_EQ(folder.read("text.txt"), "new");
  EXPECT_FALSE(fs::exists(folder.path() / "text.txt.saving~"));
}

TEST(Replacement, DoesNotDisturbALivingOne) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const auto first = native_files().replace(name);
  first->write(0, text);
  EXPECT_EQ(raised_number([&] { native_files().replace(name); }), 70);
  first->commit();
  EXPECT_EQ(folder.read("text.txt"), "new");
}

TEST(Replacement, RefusedWhenTheTargetHasBecomeAFolder) {
  const testing::TemporaryFolder folder;
  const auto file = native_files().replace(folder.name_of("text.txt"));
  file->write(0, text);
  fs::create_directory(folder.path() / "text.txt");
  EXPECT_NE(raised_number([&] { file->commit(); }), 0);
  EXPECT_TRUE(fs::is_directory(folder.path() / "text.txt"));
}

TEST(Replacement, NeedsAFolderToStandIn) {
  const testing::TemporaryFolder folder;
  EXPECT_NE(raised_number([&] { native_files().replace(folder.name_of("missing/text.txt")); }), 0);
  EXPECT_NE(raised_number([&] { native_files().replace(folder.path().u16string()); }), 0);
}

TEST(OutputFile, KeepsTheContentUntilItIsWrittenOver) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const auto file = native_files().open_for_writing(name);
  EXPECT_EQ(file->size(), 7u);
  file->write(2, text);
  EXPECT_EQ(folder.read("text.txt"), "eanewer");
  file->resize(5);
  file->flush();
  EXPECT_EQ(folder.read("text.txt"), "eanew");
  EXPECT_EQ(raised_number([&] { native_files().open_for_writing(folder.name_of("none.txt")); }), 53);
}

}  // namespace
}  // namespace tornby
