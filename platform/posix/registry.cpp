#include "platform/registry.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include "base/letter_case.h"

namespace tornby {
namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool is_absolute(std::string_view path) {
  return path.starts_with('/');
}

std::string home() {
  std::string path = variable("HOME");
  if (path.empty())
    if (const passwd* user = ::getpwuid(::getuid())) path = user->pw_dir;
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

/// A base folder: that of the environment, or its usual place under the user's own folder.
std::string base_folder(const char* name, const char* usual) {
  std::string path = variable(name);
  if (is_absolute(path)) return path;
  path = home();
  return is_absolute(path) ? path + usual : std::string();
}

std::string config_home() {
  return base_folder("XDG_CONFIG_HOME", "/.config");
}
std::string data_home() {
  return base_folder("XDG_DATA_HOME", "/.local/share");
}

std::string below(const std::string& folder, const char* name) {
  return folder.empty() ? folder : folder + name;
}

/// The path in a line such as `XDG_DESKTOP_DIR="$HOME/Desktop"`; empty for any other line.
std::string path_in_line(std::string_view line, std::string_view name) {
  const auto skip = [&line](std::string_view expected) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    const bool there = line.starts_with(expected);
    if (there) line.remove_prefix(expected.size());
    return there;
  };
  if (!skip(name) || !skip("=") || !skip("\"")) return {};
  std::string path;
  if (line.starts_with("$HOME")) {
    path = home();
    line.remove_prefix(5);
    if (!line.starts_with('/') && !line.starts_with('"')) return {};
  }
  for (; !line.empty() && line.front() != '"'; line.remove_prefix(1)) {
    if (line.front() == '\\' && line.size() > 1) line.remove_prefix(1);
    path += line.front();
  }
  const bool closed = !line.empty();
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return closed && is_absolute(path) ? path : std::string();
}

/// A folder of the user-dirs.dirs file. As in the shell, the last line that sets it counts.
std::string user_folder(std::string_view name) {
  std::ifstream file(below(config_home(), "/user-dirs.dirs"));
  std::string path;
  for (std::string line; std::getline(file, line);)
    if (std::string found = path_in_line(line, name); !found.empty()) path = std::move(found);
  return path;
}

constexpr struct {
  StringView name;
  std::string (*path)();
} shell_folders[] = {
    {u"Desktop", [] { return user_folder("XDG_DESKTOP_DIR"); }},
    {u"Personal", [] { return user_folder("XDG_DOCUMENTS_DIR"); }},
    {u"My Pictures", [] { return user_folder("XDG_PICTURES_DIR"); }},
    {u"My Music", [] { return user_folder("XDG_MUSIC_DIR"); }},
    {u"My Video", [] { return user_folder("XDG_VIDEOS_DIR"); }},
    {u"Templates", [] { return user_folder("XDG_TEMPLATES_DIR"); }},
    {u"AppData", config_home},
    {u"Local AppData", data_home},
    {u"Cache", [] { return base_folder("XDG_CACHE_HOME", "/.cache"); }},
    {u"Fonts", [] { return below(data_home(), "/fonts"); }},
    {u"Programs", [] { return below(data_home(), "/applications"); }},
    {u"Startup", [] { return below(config_home(), "/autostart"); }},
};

class PosixRegistry final : public Registry {
 public:
  std::optional<String> value(std::int32_t root, StringView subkey, StringView name) const override {
    if (root != current_user || !equal_ignoring_case(subkey, shell_folders_key)) return std::nullopt;
    for (const auto& folder : shell_folders)
      if (equal_ignoring_case(folder.name, name)) return as_text(folder.path());
    return std::nullopt;
  }

 private:
  static std::optional<String> as_text(const std::string& path) {
    if (path.empty()) return std::nullopt;
    try {
      return std::filesystem::path(path).u16string();
    } catch (const std::system_error&) {  // not UTF-8
      return std::nullopt;
    }
  }
};

}  // namespace

const Registry& native_registry() {
  static const PosixRegistry registry;
  return registry;
}

}  // namespace tornby
