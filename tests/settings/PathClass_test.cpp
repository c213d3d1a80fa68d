#include "settings/PathClass.h"

#include <gtest/gtest.h>

#include <map>

#include "support/growth.h"

namespace tornby {
namespace {

class FakeRegistry final : public Registry {
 public:
  std::map<String, String> values;
  mutable std::map<String, int> reads;

  std::optional<String> value(std::int32_t root, StringView subkey, StringView name) const override {
    EXPECT_EQ(root, current_user);
    EXPECT_EQ(subkey, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders");
    ++reads[String(name)];
    const auto found = values.find(String(name));
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
};

class FakeFolders final : public Folders {
 public:
  String windows() const override { return u"C:\\W"; }
  String system() const override { return u"C:\\W\\Sys"; }
};

class PathClassTest : public ::testing::Test {
 protected:
  String process(String path, bool expand) {
    String changed = path;
    const String result = paths.ProcessPath(changed, expand);
    EXPECT_EQ(result, changed);
    return result;
  }
  String expand(String path) { return process(std::move(path), true); }
  String collapse(String path) { return process(std::move(path), false); }

  FakeRegistry registry;
  FakeFolders folders;
  PathClass paths{registry, folders};
};

TEST_F(PathClassTest, NamesEachFolderByItsValue) {
  using Property = Variant (PathClass::*)() const;
  const std::pair<Property, StringView> properties[] = {
      {&PathClass::ApplicationData, u"Local AppData"},
      {&PathClass::AddTools, u"Administrative Tools"},
      {&PathClass::AppData, u"AppData"},
      {&PathClass::Cache, u"Cache"},
      {&PathClass::Cookies, u"Cookies"},
      {&PathClass::Desktop, u"Desktop"},
      {&PathClass::Favorites, u"Favorites"},
      {&PathClass::Fonts, u"Fonts"},
      {&PathClass::History, u"History"},
      {&PathClass::LocalAppData, u"Local AppData"},
      {&PathClass::LocalSettings, u"Local Settings"},
      {&PathClass::MyPictures, u"My Pictures"},
      {&PathClass::NetHood, u"NetHood"},
      {&PathClass::Personal, u"Personal"},
      {&PathClass::PrintHood, u"PrintHood"},
      {&PathClass::Programs, u"Programs"},
      {&PathClass::Recent, u"Recent"},
      {&PathClass::SendTo, u"SendTo"},
      {&PathClass::StartMenu, u"Start Menu"},
      {&PathClass::Startup, u"Startup"},
      {&PathClass::Templates, u"Templates"},
  };
  for (const auto& [property, name] : properties) {
    registry.values.clear();
    EXPECT_EQ((paths.*property)(), Variant(u""));
    registry.values[String(name)] = u"folder of " + String(name) + u"\\";
    EXPECT_EQ((paths.*property)(), Variant(u"folder of " + String(name) + u"\\"));
  }
  EXPECT_TRUE(is_empty(paths.ProgramFiles()));
  EXPECT_EQ(paths.WindowsDir(), Variant(u"C:\\W"));
  EXPECT_EQ(paths.WindowsSysDir(), Variant(u"C:\\W\\Sys"));
  registry.values[u"Local Settings"] = u"L:\\";
  EXPECT_EQ(paths.TemporaryFolder(), u"L:\\\\Temp");
}

TEST_F(PathClassTest, ExchangesEachTokenAndItsFolder) {
  const std::pair<StringView, StringView> tokens[] = {
      {u"%APPDATA%", u"Local AppData"},
      {u"%ADMIN%", u"Administrative Tools"},
      {u"%COOKIES%", u"Cookies"},
      {u"%DESKTOP%", u"Desktop"},
      {u"%FAVORITES%", u"Favorites"},
      {u"%HISTORY%", u"History"},
      {u"%MYPIC%", u"My Pictures"},
      {u"%NETHOOD%", u"NetHood"},
      {u"%PERSONAL%", u"Personal"},
      {u"%PRINTHOOD%", u"PrintHood"},
      {u"%PROGRAM%", u"Programs"},
      {u"%RECENT%", u"Recent"},
      {u"%SENDTO%", u"SendTo"},
      {u"%STARTMENU%", u"Start Menu"},
      {u"%STARTUP%", u"Startup"},
      {u"%TEMPLATES%", u"Templates"},
      {u"%%", u"Cache"},
      {u"%WINDIR%", u""},
      {u"%WINSYSDIR%", u""},
  };
  for (const auto& [token, name] : tokens)
    if (!name.empty()) registry.values[String(name)] = u"folder of " + String(name) + u"!";
  for (const auto& [token, name] : tokens) {
    const String folder = token == u"%WINDIR%"      ? folders.windows()
                          : token == u"%WINSYSDIR%" ? folders.system()
                                                    : registry.values[String(name)];
    EXPECT_EQ(expand(String(token) + u"\\x"), folder + u"\\x");
    EXPECT_EQ(collapse(folder + u"\\x"), String(token) + u"\\x");
  }
}

TEST_F(PathClassTest, NoPathIsSlow) {
  const double grown = testing::growth(1000, [this](unsigned n) {
    registry.values[u"Desktop"] = String(n, u'a') + u"b";
    collapse(String(2 * n, u'a'));
  });
  EXPECT_LT(grown, testing::most_growth);
}

TEST_F(PathClassTest, ExpandsTheLastTokenOfTheTable) {
  registry.values = {{u"Desktop", u"D:\\Desk"},
                     {u"AppData", u"wrong"},
                     {u"Local AppData", u"D:\\Local"},
                     {u"Cache", u"D:\\Cache"},
                     {u"Fonts", u"D:\\Fonts"}};
  EXPECT_EQ(expand(u"%WINDIR%\\%DESKTOP%\\%DESKTOP%"), u"%WINDIR%\\D:\\Desk\\D:\\Desk");
  EXPECT_EQ(expand(u"%APPDATA%\\x"), u"D:\\Local\\x");
  EXPECT_EQ(expand(u"100%%"), u"100D:\\Cache");
  EXPECT_EQ(expand(u"%WINDIR%%DESKTOP%"), u"%WINDIRD:\\CacheDESKTOP%");  // two adjacent percent signs
  for (const StringView unchanged : {u"%desktop%\\x", u"%FONT%", u"%CACHE%", u"%PROGRAMFILES%", u"%HISTORY%", u""})
    EXPECT_EQ(expand(String(unchanged)), unchanged);
  registry.reads.clear();
  expand(u"x");
  EXPECT_EQ(registry.reads.size(), 17u);
  for (const auto& [name, count] : registry.reads) EXPECT_EQ(count, 1);  // once a call
}

TEST_F(PathClassTest, CollapsesTheLongestByItsOwnMeasure) {
  registry.values = {{u"Desktop", u"C:\\W\\Profiles\\me\\Desktop"}, {u"Cache", u"C:\\W\\Pro"}};
  EXPECT_EQ(collapse(u"C:\\W\\a"), u"%WINDIR%\\a");
  EXPECT_EQ(collapse(u"C:\\W\\Sys\\a"), u"%WINSYSDIR%\\a");
  EXPECT_EQ(collapse(u"C:\\W\\Profiles\\me\\Desktop\\a"), u"%DESKTOP%\\a");  // Cache is less than half as long
  EXPECT_EQ(collapse(u"c:\\w\\a"), u"c:\\w\\a");                             // found, but not letter for letter
  registry.values = {{u"Desktop", u"D:\\12345678"}, {u"Templates", u"D:\\123"}};
  EXPECT_EQ(collapse(u"D:\\12345678"), u"%TEMPLATES%45678");  // a later one, shorter but more than half as long
}

// The folders of this machine: on Windows those of a new profile, elsewhere what the desktop says.
TEST(PathClassNative, ReadsTheRealSystem) {
  const PathClass paths;
#ifdef _WIN32
  for (const Variant& folder : {paths.Desktop(), paths.AppData(), paths.LocalAppData(), paths.StartMenu()}) {
    const auto* path = std::get_if<String>(&folder);
    ASSERT_TRUE(path);
    EXPECT_EQ(path->substr(1, 2), u":\\");
    EXPECT_NE(path->back(), u'\0');
  }
  EXPECT_EQ(paths.WindowsDir(), Variant(u"C:\\windows"));
  String path = std::get<String>(paths.Desktop()) + u"\\plan.txt";
  EXPECT_EQ(paths.ProcessPath(path, false), u"%DESKTOP%\\plan.txt");
  EXPECT_EQ(paths.ProcessPath(path, true), std::get<String>(paths.Desktop()) + u"\\plan.txt");
  std::int32_t machine = static_cast<std::int32_t>(0x80000002);
  const StringView version = u"Software\\Microsoft\\Windows NT\\CurrentVersion";
  EXPECT_EQ(paths.RGGetKeyValue(machine, version, u"CurrentVersion"), Variant(u"6.1"));
  EXPECT_EQ(paths.RGGetKeyValue(machine, version, u"none such"), Variant(u""));
  EXPECT_EQ(paths.RGGetKeyValue(machine, u"none such", u"x"), Variant(u""));
  EXPECT_EQ(paths.RGGetKeyValue(machine, version, StringView(u"CurrentVersion\0x", 16)), Variant(u""));
#else
  EXPECT_EQ(paths.WindowsDir(), Variant(u""));
#endif
}

}  // namespace
}  // namespace tornby
