// Sets a key of a settings file and lists the group's keys.
// Usage: settings file group key value
#include <tornby/base/letter_case.h>
#include <tornby/platform/text.h>
#include <tornby/settings/XML_Settings.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fputs("usage: settings file group key value\n", stderr);
    return 2;
  }
  const tornby::String group = tornby::upper(tornby::from_ansi(argv[2]));
  tornby::XML_Settings settings;
  settings.FileName(tornby::from_ansi(argv[1]));
  settings.SaveSetting(group, tornby::from_ansi(argv[3]), tornby::from_ansi(argv[4]));
  settings.Save();
  for (const auto& pair : settings.SplitBlock(settings.GetStructure(group, false)))
    std::printf("%s = %s\n", tornby::to_ansi(pair->Key()).c_str(), tornby::to_ansi(pair->Value()).c_str());
}
