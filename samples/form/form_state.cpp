#include "form_state.h"

#include <tornby/base/runtime_error.h>
#include <tornby/settings/XML_Settings.h>

#include <string>

namespace {

using tornby::String;
using tornby::StringView;

constexpr StringView group = u"FORM STATE";

/// A file whose group cannot be cut out counts as empty.
tornby::XML_Settings open_settings(StringView file) {
  tornby::XML_Settings settings;
  settings.FileName(file);
  try {
    settings.GetSetting(group, u"PATH", u"");
  } catch (const tornby::RuntimeError&) {
    settings.SetContents(u"");
  }
  return settings;
}

int number(const tornby::XML_Settings& settings, StringView key, int otherwise, int lowest, int highest) {
  try {
    const int value = tornby::to_int32(settings.GetSetting(group, key, tornby::widen(std::to_string(otherwise))));
    return value < lowest || value > highest ? otherwise : value;
  } catch (const tornby::RuntimeError&) {
    return otherwise;
  }
}

String line(StringView key, StringView value) {
  return String(u"<").append(key).append(u">").append(value).append(u"</").append(key).append(u">\r\n");
}

String line(StringView key, int value) {
  return line(key, tornby::widen(std::to_string(value)));
}

}  // namespace

FormState load_state(StringView file) {
  const tornby::XML_Settings settings = open_settings(file);
  FormState state;
  state.path = settings.GetSetting(group, u"PATH", u"");
  state.checksum = settings.GetSetting(group, u"CHECKSUM", u"");
  state.alignment = number(settings, u"ALIGNMENT", state.alignment, 0, 2);
  state.vertical = number(settings, u"VERTICAL", state.vertical, 0, 2);
  state.frame = number(settings, u"FRAME", state.frame, 0, 2);
  state.width = number(settings, u"WIDTH", state.width, FormState::least_width, 10000);
  state.height = number(settings, u"HEIGHT", state.height, FormState::least_height, 10000);
  return state;
}

void save_state(StringView file, const FormState& state) {
  // The group is written whole: SaveSetting replaces a value wherever it occurs, which a path need not survive.
  String block = String(u"<").append(group).append(u">\r\n");
  block += line(u"PATH", state.path) + line(u"CHECKSUM", state.checksum) + line(u"ALIGNMENT", state.alignment) +
           line(u"VERTICAL", state.vertical) + line(u"FRAME", state.frame) + line(u"WIDTH", state.width) +
           line(u"HEIGHT", state.height);
  block.append(u"</").append(group).append(u">");
  tornby::XML_Settings settings = open_settings(file);
  settings.InsertGroup(group, block);
  settings.Save();
}
