#include "file_report.h"

#include <tornby/checksums/clsApi.h>
#include <tornby/checksums/clsCRC.h>

#include <cstdio>

namespace {

using tornby::String;
using tornby::StringView;
using tornby::Variant;

/// Like clsCRC::CalculateFile, but a number on every system.
Variant checksum_of(StringView path) {
  tornby::clsCRC crc;
  Variant result = crc.CalculateFile(path);
  if (!tornby::is_empty(result)) return result;
  // The file is empty, or this is a 32-bit program on a 64-bit system.
  const String content = tornby::clsApi().ApiReadFile(path);
  return content.empty() ? Variant() : crc.AddString(content);
}

String hexadecimal(std::int32_t number) {
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08X", static_cast<unsigned>(number));
  return tornby::widen(digits);
}

/// The file's name as a caption shows it, where a single "&" would underline what follows.
String caption_of(StringView path) {
  String caption;
  for (const char16_t unit : path.substr(path.find_last_of(u"\\/:") + 1)) caption.append(unit == u'&' ? 2 : 1, unit);
  return caption;
}

}  // namespace

FileReport report_on(StringView path, StringView known) {
  if (path.empty()) return {u"", u"No file chosen", u"Choose a file to see its checksum."};
  const String name = caption_of(path);
  const Variant result = checksum_of(path);
  const auto* number = std::get_if<std::int32_t>(&result);
  if (!number) return {u"", tornby::is_empty(result) ? u"This file is empty" : u"This file cannot be read", name};

  FileReport report{hexadecimal(*number), u"CRC-32: ", name};
  report.link += report.checksum;
  if (known == report.checksum) {
    report.label += u" is unchanged";
  } else if (!known.empty()) {
    report.label.append(u" has changed: it was ").append(known);
  }
  return report;
}
