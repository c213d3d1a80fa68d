#include "settings/PathClass.h"

#include <utility>

#include "base/search.h"
#include "settings/document/text.h"

namespace tornby {
namespace {

bool occurs_in(StringView path, StringView what) {
  return find_ignoring_case(path, what) != StringView::npos;
}

}  // namespace

PathClass::PathClass(const Registry& registry, const Folders& folders) : registry_(&registry), folders_(&folders) {}

Variant PathClass::ApplicationData() const {
  return LocalAppData();
}

Variant PathClass::RGGetKeyValue(std::int32_t& root_key, StringView subkey, StringView value_name) const {
  return registry_->value(root_key, subkey, value_name).value_or(String());
}

Variant PathClass::AddTools() const {
  return folder(u"Administrative Tools");
}
Variant PathClass::AppData() const {
  return folder(u"AppData");
}
Variant PathClass::Cache() const {
  return folder(u"Cache");
}
Variant PathClass::Cookies() const {
  return folder(u"Cookies");
}
Variant PathClass::Desktop() const {
  return folder(u"Desktop");
}
Variant PathClass::Favorites() const {
  return folder(u"Favorites");
}
Variant PathClass::Fonts() const {
  return folder(u"Fonts");
}
Variant PathClass::History() const {
  return folder(u"History");
}
Variant PathClass::LocalAppData() const {
  return folder(u"Local AppData");
}
Variant PathClass::LocalSettings() const {
  return folder(u"Local Settings");
}
Variant PathClass::MyPictures() const {
  return folder(u"My Pictures");
}
Variant PathClass::NetHood() const {
  return folder(u"NetHood");
}
Variant PathClass::Personal() const {
  return folder(u"Personal");
}
Variant PathClass::PrintHood() const {
  return folder(u"PrintHood");
}
Variant PathClass::Programs() const {
  return folder(u"Programs");
}
Variant PathClass::Recent() const {
  return folder(u"Recent");
}
Variant PathClass::SendTo() const {
  return folder(u"SendTo");
}
Variant PathClass::StartMenu() const {
  return folder(u"Start Menu");
}
Variant PathClass::Startup() const {
  return folder(u"Startup");
}
Variant PathClass::Templates() const {
  return folder(u"Templates");
}
Variant PathClass::WindowsDir() const {
  return folders_->windows();
}
Variant PathClass::WindowsSysDir() const {
  return folders_->system();
}

String PathClass::ProcessPath(String& path, bool expand) const {
  // The order decides which of several matches is taken.
  const std::pair<StringView, String> table[] = {
      {u"%WINDIR%", folders_->windows()},
      {u"%WINSYSDIR%", folders_->system()},
      {u"%APPDATA%", folder(u"Local AppData")},
      {u"%ADMIN%", folder(u"Administrative Tools")},
      {u"%PROGRAMFILES%", {}},
      {u"%COOKIES%", folder(u"Cookies")},
      {u"%DESKTOP%", folder(u"Desktop")},
      {u"%FAVORITES%", folder(u"Favorites")},
      {u"%FONT%", {}},
      {u"%HISTORY%", folder(u"History")},
      {u"%MYPIC%", folder(u"My Pictures")},
      {u"%NETHOOD%", folder(u"NetHood")},
      {u"%PERSONAL%", folder(u"Personal")},
      {u"%PRINTHOOD%", folder(u"PrintHood")},
      {u"%PROGRAM%", folder(u"Programs")},
      {u"%RECENT%", folder(u"Recent")},
      {u"%SENDTO%", folder(u"SendTo")},
      {u"%STARTMENU%", folder(u"Start Menu")},
      {u"%STARTUP%", folder(u"Startup")},
      {u"%TEMPLATES%", folder(u"Templates")},
      {u"%%", folder(u"Cache")},
      {u"%CACHE%", {}},
  };
  StringView find, replacement;
  std::size_t best = 0;
  for (const auto& [token, value] : table) {
    if (value.empty()) continue;
    if (expand && occurs_in(path, token)) {
      find = token;
      replacement = value;
    } else if (!expand && 2 * value.size() > best && occurs_in(path, value)) {
      // Twice the length, two bytes a character, against characters: callers rely on what this prefers.
      find = value;
      replacement = token;
      best = value.size();
    }
  }
  path = document::replace_all(path, find, replacement);
  return path;
}

String PathClass::TemporaryFolder() const {
  return folder(u"Local Settings") + u"\\Temp";
}

String PathClass::folder(StringView value_name) const {
  return registry_->value(current_user, shell_folders_key, value_name).value_or(String());
}

}  // namespace tornby
