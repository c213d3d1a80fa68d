// Sets a key of a settings file and lists the group's keys.
// Usage: settings file group key value
#include <tornby/base/letter_case.h>
#include <tornby/settings/XML_Settings.h>

#include <cstdio>
#include <string>

namespace {

/// The ASCII characters of a text; others as question marks.
std::string narrow(tornby::StringView text) {
  std::string result;
  for (const char16_t unit : text) result += unit < 0x80 ? static_cast<char>(unit) : '?';
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fputs("usage: settings file group key value\n", stderr);
    return 2;
  }
  const tornby::String group = tornby::upper(tornby::widen(argv[2]));
  tornby::XML_Settings settings;
  settings.FileName(tornby::widen(argv[1]));
  settings.SaveSetting(group, tornby::widen(argv[3]), tornby::widen(argv[4]));
  settings.Save();
  for (const auto& pair : settings.SplitBlock(settings.GetStructure(group, false)))
    std::printf("%s = %s\n", narrow(pair->Key()).c_str(), narrow(pair->Value()).c_str());
}
