// Where the user's and the system's special folders are, and paths with a name in place of such a folder.
#pragma once

#include <cstdint>

#include <tornby/base/text.h>
#include <tornby/base/variant.h>
#include <tornby/platform/folders.h>
#include <tornby/platform/registry.h>

namespace tornby {

/// The members that name a folder return its path as a text, exactly as the system keeps it: no backslash is added or
/// taken off and no variable expanded. An empty text means that the system does not tell. All are read afresh at each
/// call, under the user's shell folders of the registry (platform/registry.h says what stands there elsewhere than on
/// Windows); the value's name is given where it differs.
class PathClass {
 public:
  explicit PathClass(const Registry& registry = native_registry(), const Folders& folders = native_folders());

  /// The folder of "Local AppData", as `LocalAppData`.
  Variant ApplicationData() const;

  /// The value of any key of the registry as text; an empty text when it is missing or cannot be read. `root_key` is
  /// the number of a root key, such as -2147483647 (0x80000001) for the current user, and is not changed. Data that is
  /// no text comes as the characters of its bytes, but for the last one. The key is closed again after each reading.
  Variant RGGetKeyValue(std::int32_t& root_key, StringView subkey, StringView value_name) const;

  Variant AddTools() const;  ///< "Administrative Tools"
  Variant AppData() const;
  Variant Cache() const;
  Variant Cookies() const;
  Variant Desktop() const;
  Variant Favorites() const;
  Variant Fonts() const;
  Variant History() const;
  Variant LocalAppData() const;   ///< "Local AppData"
  Variant LocalSettings() const;  ///< "Local Settings"
  Variant MyPictures() const;     ///< "My Pictures"
  Variant NetHood() const;
  Variant Personal() const;
  Variant PrintHood() const;
  Variant Programs() const;

  /// Always empty: nothing is read.
  Variant ProgramFiles() const { return {}; }

  Variant Recent() const;
  Variant SendTo() const;
  Variant StartMenu() const;  ///< "Start Menu"
  Variant Startup() const;
  Variant Templates() const;

  /// The Windows and the system directory. An empty text on other systems.
  Variant WindowsDir() const;
  Variant WindowsSysDir() const;

  /// Puts a folder in place of its token in `path`, or (not `expand`) a token in place of its folder; changes `path`
  /// and returns it. A token is a name between two percent signs:
  ///
  /// WINDIR, WINSYSDIR, APPDATA (which is `LocalAppData`), ADMIN, COOKIES, DESKTOP, FAVORITES, HISTORY, MYPIC, NETHOOD,
  /// PERSONAL, PRINTHOOD, PROGRAM, RECENT, SENDTO, STARTMENU, STARTUP, TEMPLATES, and two percent signs alone for
  /// `Cache`.
  ///
  /// One token is exchanged per call, wherever it occurs. Of several that occur, expanding takes the last one in this
  /// list. Collapsing takes the first whose folder occurs, then each later one whose folder is more than half as long
  /// as that of the one taken before. Folders that the system does not tell play no part. They are looked for ignoring
  /// case but exchanged only letter for letter, so one in another case stays. Takes time in proportion to `path`, the
  /// folders and the result.
  String ProcessPath(String& path, bool expand) const;

  /// `LocalSettings` and "\Temp", whether or not there is such a folder.
  String TemporaryFolder() const;

 private:
  String folder(StringView value_name) const;

  const Registry* registry_;
  const Folders* folders_;
};

}  // namespace tornby
