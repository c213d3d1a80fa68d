// The texts that the system keeps in its registry.
#pragma once

#include <cstdint>
#include <optional>

#include <tornby/base/text.h>

namespace tornby {

/// The root key HKEY_CURRENT_USER.
inline constexpr std::int32_t current_user = static_cast<std::int32_t>(0x80000001);

/// The key, under the current user, whose values are the user's folders.
inline constexpr StringView shell_folders_key =
    u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

class Registry {
 public:
  virtual ~Registry() = default;

  /// The value `name` of the key `subkey` under `root`, without the NUL that ends it; nothing when there is no such key
  /// or value, or it cannot be read. Names ignore case. Data of any other kind than text comes as the characters of its
  /// bytes, but for the last one.
  virtual std::optional<String> value(std::int32_t root, StringView subkey, StringView name) const = 0;
};

/// The registry of Windows.
///
/// Elsewhere a single key exists, `shell_folders_key`, with the folders that the freedesktop.org conventions give the
/// user. A folder that is not configured, and any other name, is missing.
///
/// | Value         | Folder                                                     |
/// |---------------|------------------------------------------------------------|
/// | Desktop       | XDG_DESKTOP_DIR of the user-dirs.dirs file                 |
/// | Personal      | XDG_DOCUMENTS_DIR of that file                             |
/// | My Pictures   | XDG_PICTURES_DIR of that file                              |
/// | My Music      | XDG_MUSIC_DIR of that file                                 |
/// | My Video      | XDG_VIDEOS_DIR of that file                                |
/// | Templates     | XDG_TEMPLATES_DIR of that file                             |
/// | AppData       | XDG_CONFIG_HOME, at first ~/.config                        |
/// | Local AppData | XDG_DATA_HOME, at first ~/.local/share                     |
/// | Cache         | XDG_CACHE_HOME, at first ~/.cache                          |
/// | Fonts         | fonts in XDG_DATA_HOME                                     |
/// | Programs      | applications in XDG_DATA_HOME, where the menu entries are  |
/// | Startup       | autostart in XDG_CONFIG_HOME                               |
///
/// user-dirs.dirs is read from XDG_CONFIG_HOME at each call. Relative paths are ignored, as the conventions ask.
const Registry& native_registry();

}  // namespace tornby
