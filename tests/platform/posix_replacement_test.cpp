// What only this system can show of saving: links, rights, devices.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
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

TEST(PosixReplacement, AccessListsAndAttributesStay) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const std::string narrow = (folder.path() / "text.txt").string();
  // Version 2; the owner reads and writes, user 4711 reads, group and others nothing, the mask bounds to reading.
  const std::string list(
      "\2\0\0\0"
      "\1\0\6\0\377\377\377\377"
      "\2\0\4\0\147\22\0\0"
      "\4\0\0\0\377\377\377\377"
      "\20\0\4\0\377\377\377\377"
      "\40\0\0\0\377\377\377\377",
      44);
  const auto attribute = [&](const char* file, const char* which) {
    std::string value(100, '\0');
    const ssize_t size = ::getxattr((folder.path() / file).c_str(), which, value.data(), value.size());
    value.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return value;
  };
  constexpr const char* access = "system.posix_acl_access";
  if (::setxattr(narrow.c_str(), access, list.data(), list.size(), 0) != 0) GTEST_SKIP() << "no access lists here";
  ::setxattr(narrow.c_str(), "user.comment", "mine", 4, 0);
  {
    const auto file = native_files().replace(name);
    EXPECT_EQ(attribute("text.txt.saving~", access), list) << "from the moment that it is there";
  }
  EXPECT_TRUE(save(name));
  EXPECT_EQ(folder.read("text.txt"), "new\r\n");
  EXPECT_EQ(attribute("text.txt", access), list);
  EXPECT_EQ(attribute("text.txt", "user.comment"), "mine");

  // A list that new files of the folder inherit is not for a file that has none.
  ::setxattr(folder.path().c_str(), "system.posix_acl_default", list.data(), list.size(), 0);
  folder.write("private.txt", "earlier");
  ::removexattr((folder.path() / "private.txt").c_str(), access);
  set_rights(folder.path() / "private.txt", 0640);
  EXPECT_TRUE(save(folder.name_of("private.txt")));
  EXPECT_EQ(attribute("private.txt", access), "");
  EXPECT_EQ(static_cast<unsigned>(fs::status(folder.path() / "private.txt").permissions()), 0640u);
}

TEST(PosixReplacement, IsWrittenOverWhereTheNewFileCouldNotHaveTheOldOnesGroup) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  set_rights(folder.path(), 0777);
  set_rights(name, 0666);
  if (::chown((folder.path() / "text.txt").c_str(), 0, 4711) != 0) GTEST_SKIP() << "for the superuser only";
  struct stat before {
  }, after{};
  ::stat((folder.path() / "text.txt").c_str(), &before);
  {
    const OrdinaryUser user;
    EXPECT_TRUE(save(name));
  }
  ::stat((folder.path() / "text.txt").c_str(), &after);
  EXPECT_EQ(folder.read("text.txt"), "new\r\n");
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(after.st_gid, 4711u);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST(PosixReplacement, PipesFailInsteadOfWaiting) {
  const testing::TemporaryFolder folder;
  const String pipe = folder.name_of("pipe");
  ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(save(pipe));
  EXPECT_EQ(clsApi().ApiReadFile(pipe), u"");
  native_files().set_aside(pipe);
  EXPECT_EQ(testing::raised_number([&] { native_files().size(pipe); }), 75) << "it is still there";
  EXPECT_EQ(testing::raised_number([&] { native_files().open_for_reading(pipe); }), 75);
  const int reader = ::open((folder.path() / "pipe").c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_FALSE(save(pipe)) << "also when somebody reads";
  ::close(reader);
  ASSERT_EQ(::mkfifo((folder.path() / "text.txt.saving~").c_str(), 0600), 0);
  EXPECT_TRUE(save(folder.name_of("text.txt")));
  EXPECT_EQ(clsApi().ApiReadFile(u"/dev/zero"), u"");
}

}  // namespace
}  // namespace tornby
