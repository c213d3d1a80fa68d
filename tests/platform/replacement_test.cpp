#include <gtest/gtest.h>

#include <filesystem>

#include "checksums/clsApi.h"
#include "platform/files.h"
#include "support/errors.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

namespace fs = std::filesystem;
using testing::raised_number;
using testing::TemporaryFolder;

const Bytes text = {'n', 'e', 'w'};

std::ptrdiff_t files_in(const TemporaryFolder& folder) {
  return std::distance(fs::directory_iterator(folder.path()), {});
}

TEST(Replacement, TakesThePlaceOnlyWhenCommitted) {
  const TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  native_files().replace(name)->write(text);
  EXPECT_EQ(files_in(folder), 1);

  const auto kept = native_files().replace(name);
  kept->write(ByteView(text).first(1));
  kept->write(ByteView(text).subspan(1));
  EXPECT_EQ(folder.read("text.txt"), "earlier");
  EXPECT_TRUE(kept->commit());
  EXPECT_EQ(folder.read("text.txt"), "new");
  EXPECT_EQ(files_in(folder), 1);
}

TEST(Replacement, RemovesWhatADeadProcessLeftButOnlyAfterItHasSucceeded) {
  const TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  {
    const auto dead = native_files().replace(name);
    dead->write(text);
    dead->keep();
  }
  ASSERT_EQ(files_in(folder), 2);
  native_files().replace(name)->write(text);
  EXPECT_EQ(folder.read("text.txt.saving~"), "new") << "it may hold the only whole text";
  const auto file = native_files().replace(name);
  EXPECT_TRUE(file->commit());
  EXPECT_EQ(files_in(folder), 1);
}

TEST(Replacement, LeavesAloneWhatMerelyHasItsName) {
  const TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  folder.write("text.txt.saving~", "mine");
  fs::create_directory(folder.path() / "text.txt.saving~2");
  const auto alive = native_files().replace(name);
  alive->write(text);
  EXPECT_TRUE(fs::exists(folder.path() / "text.txt.saving~3"));
  EXPECT_TRUE(clsApi().apiSaveFile(name, u"A"));
  EXPECT_EQ(folder.read("text.txt"), "A\r\n");
  EXPECT_EQ(folder.read("text.txt.saving~"), "mine");
  EXPECT_TRUE(alive->commit());
  EXPECT_EQ(folder.read("text.txt"), "new");
  EXPECT_EQ(files_in(folder), 3);
}

TEST(Replacement, RefusedWhenTheTargetHasBecomeAFolder) {
  const TemporaryFolder folder;
  const auto file = native_files().replace(folder.name_of("text.txt"));
  file->write(text);
  fs::create_directory(folder.path() / "text.txt");
  EXPECT_FALSE(file->commit());
  std::array<std::uint8_t, 8> back{};
  EXPECT_EQ(file->read(1, back), 2u);
  EXPECT_EQ(back[0], 'e');
  EXPECT_TRUE(fs::is_directory(folder.path() / "text.txt"));
}

TEST(Replacement, LongNames) {
  for (const std::size_t length : {200u, 247u, 248u, 250u, 255u}) {
    const TemporaryFolder folder;
    const std::string file(length, 'n');
    for (const StringView saved : {u"first", u"second"}) {
      EXPECT_TRUE(clsApi().apiSaveFile(folder.name_of(file), saved)) << length;
      EXPECT_EQ(clsApi().ApiReadFile(folder.name_of(file)), String(saved) + u"\r\n");
    }
    EXPECT_EQ(files_in(folder), 1);
  }
  const TemporaryFolder folder;
  String deep = folder.path().u16string();
  for (int level = 0; level < 4; ++level) deep += String(1, fs::path::preferred_separator) + String(70, u'd');
#ifdef _WIN32
  fs::create_directories(u"\\\\?\\" + deep);
#else
  fs::create_directories(deep);
#endif
  for (const StringView saved : {u"first", u"second"}) {
    const String name = deep + String(1, fs::path::preferred_separator) + u"text.txt";
    EXPECT_TRUE(clsApi().apiSaveFile(name, saved));
    EXPECT_EQ(clsApi().ApiReadFile(name), String(saved) + u"\r\n");
  }
}

TEST(OutputFile, KeepsTheContentUntilItIsWrittenOver) {
  const TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  {
    const auto file = native_files().open_for_writing(name);
    EXPECT_EQ(file->size(), 7u);
    file->write(2, text);
    file->resize(5);
    file->flush();
  }
  EXPECT_EQ(folder.read("text.txt"), "eanew");
  native_files().open_for_writing(folder.name_of("new.txt"))->write(0, text);
  EXPECT_EQ(folder.read("new.txt"), "new");
}

}  // namespace
}  // namespace tornby
