#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "platform/registry.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

/// A variable of the environment, put back at the end.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    set(value);
  }
  ~Variable() { set(before_ ? before_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

  void set(const char* value) { value ? ::setenv(name_, value, 1) : ::unsetenv(name_); }

 private:
  const char* name_;
  std::optional<std::string> before_;
};

std::optional<String> folder(StringView name) {
  return native_registry().value(current_user, shell_folders_key, name);
}

TEST(UserFolders, FollowTheDesktop) {
  const testing::TemporaryFolder config;
  Variable home("HOME", "/home/x/"), config_home("XDG_CONFIG_HOME", config.path().c_str());
  Variable data_home("XDG_DATA_HOME", nullptr), cache_home("XDG_CACHE_HOME", "relative/path");
  EXPECT_EQ(folder(u"Desktop"), std::nullopt);  // no user-dirs.dirs yet
  config.write("user-dirs.dirs",
               "# XDG_DESKTOP_DIR=\"/comment\"\n"
               "XDG_DESKTOP_DIR=\"$HOME/old\"\n"
               "  XDG_DESKTOP_DIR = \"$HOME/Schreib\xC3\xA4 \\\"tisch\\\"/\"\n"
               "XDG_DOCUMENTS_DIR=\"/data/\"\n"
               "XDG_PICTURES_DIR=\"pictures\"\n"
               "XDG_MUSIC_DIR=\"$HOMEmusic\"\n"
               "XDG_VIDEOS_DIR=\"/never closed\n"
               "XDG_TEMPLATES_DIR=\"/\xFF\"\n");
  EXPECT_EQ(folder(u"desktop"), u"/home/x/Schreib\u00E4 \"tisch\"");
  EXPECT_EQ(folder(u"Personal"), u"/data");
  for (const StringView missing : {u"My Pictures", u"My Music", u"My Video", u"Templates", u"Recent", u""})
    EXPECT_EQ(folder(missing), std::nullopt);
  EXPECT_EQ(folder(u"AppData"), config.path().u16string());
  EXPECT_EQ(folder(u"Local AppData"), u"/home/x/.local/share");
  EXPECT_EQ(folder(u"Programs"), u"/home/x/.local/share/applications");
  EXPECT_EQ(folder(u"Cache"), u"/home/x/.cache");
  data_home.set("/srv");
  EXPECT_EQ(folder(u"Fonts"), u"/srv/fonts");
  EXPECT_EQ(native_registry().value(current_user, u"Software", u"Desktop"), std::nullopt);
  EXPECT_EQ(native_registry().value(0, shell_folders_key, u"Desktop"), std::nullopt);
}

}  // namespace
}  // namespace tornby
