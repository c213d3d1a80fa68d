// What only this system can show of saving: links, rights, devices.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "checksums/clsApi.h"
#include "support/errors.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

namespace fs = std::filesystem;

bool save(const String& name) {
  return clsApi().apiSaveFile(name, u"new");
}

/// An ordinary user while it lives: the superuser may write everywhere.
class OrdinaryUser {
 public:
  OrdinaryUser() : was_superuser_(::geteuid() == 0) {
    if (was_superuser_ && ::seteuid(65534) != 0) ADD_FAILURE() << "cannot become an ordinary user";
  }
  ~OrdinaryUser() {
    if (was_superuser_ && ::seteuid(0) != 0) ADD_FAILURE() << "cannot become the superuser again";
  }

 private:
  bool was_superuser_;
};

void set_rights(const fs::path& path, unsigned rights) {
  fs::permissions(path, static_cast<fs::perms>(rights));
}

TEST(PosixReplacement, KeepsTheRights) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  for (const unsigned rights : {0600u, 0664u, 0755u}) {
    set_rights(name, rights);
    EXPECT_TRUE(save(name));
    EXPECT_EQ(folder.read("text.txt"), "new\r\n");
    EXPECT_EQ(static_cast<unsigned>(fs::status(name).permissions()), rights);
  }
}

TEST(PosixReplacement, FollowsLinksAndLeavesThemLinks) {
  const testing::TemporaryFolder folder;
  fs::create_directories(folder.path() / "deep" / "er");
  folder.write("deep/text.txt", "earlier");
  fs::create_symlink("../text.txt", folder.path() / "deep" / "er" / "relative");
  fs::create_symlink(folder.path() / "deep" / "er" / "relative", folder.path() / "absolute");
  fs::create_symlink("deep/new.txt", folder.path() / "dangling");
  EXPECT_TRUE(save(folder.name_of("absolute")));
  EXPECT_TRUE(save(folder.name_of("dangling")));
  EXPECT_EQ(folder.read("deep/text.txt"), "new\r\n");
  EXPECT_EQ(folder.read("deep/new.txt"), "new\r\n");
  for (const char* link : {"absolute", "dangling", "deep/er/relative"})
    EXPECT_TRUE(fs::is_symlink(folder.path() / link)) << link;

  fs::create_symlink("circle", folder.path() / "circle");
  EXPECT_FALSE(save(folder.name_of("circle")));
}

TEST(PosixReplacement, WritesDevicesWithoutReplacingThem) {
  EXPECT_TRUE(save(u"/dev/null"));
  EXPECT_FALSE(save(u"/dev/full"));
  const testing::TemporaryFolder folder;
  fs::create_symlink("/dev/full", folder.path() / "full");
  EXPECT_FALSE(save(folder.name_of("full")));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(PosixReplacement, SavesWhereOnlyTheFileIsWritable) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  folder.write("read-only.txt", "earlier");
  set_rights(name, 0666);
  set_rights(folder.path() / "read-only.txt", 0444);
  {
    set_rights(folder.path(), 0555);
    const OrdinaryUser user;
    EXPECT_TRUE(save(name));
    EXPECT_FALSE(save(folder.name_of("other.txt")));
  }
  EXPECT_EQ(folder.read("text.txt"), "new\r\n");
  {
    set_rights(folder.path(), 0777);
    const OrdinaryUser user;
    EXPECT_FALSE(save(folder.name_of("read-only.txt"))) << "although it could be replaced";
    EXPECT_TRUE(save(folder.name_of("other.txt")));
  }
  EXPECT_EQ(folder.read("read-only.txt"), "earlier");
}

TEST(PosixReplacement, NameTooLongForAnother) {
  const testing::TemporaryFolder folder;
  const std::string file(255, 'n');
  folder.write(file, "earlier");
  EXPECT_TRUE(save(folder.name_of(file)));
  EXPECT_EQ(folder.read(file), "new\r\n");
}

}  // namespace
}  // namespace tornby
