#include "dialogs/file_selection.h"

#include <algorithm>

#include "base/runtime_error.h"

namespace tornby::dialogs {
namespace {

constexpr StringView two_nuls(u"\0\0", 2);

}  // namespace

String convert_filter(StringView list) {
  String converted(list);
  std::replace(converted.begin(), converted.end(), u'|', u'\0');
  if (!converted.ends_with(two_nuls)) converted += two_nuls;
  return converted;
}

std::string name_buffer(std::int32_t length) {
  if (length < 0) throw RuntimeError(StandardError::invalid_procedure_call);
  std::string buffer(static_cast<std::size_t>(length) + 2, ' ');
  buffer.front() = buffer.back() = '\0';
  return buffer;
}

StringView up_to_nul(StringView text) {
  return text.substr(0, text.find(u'\0'));
}

StringView folder_part(StringView path) {
  return path.substr(0, path.rfind(u'\\') + 1);  // npos + 1 is 0
}

StringView file_part(StringView path) {
  return path.substr(path.rfind(u'\\') + 1);
}

std::int32_t count_files(StringView buffer) {
  const std::size_t end = buffer.find(two_nuls);
  if (end == StringView::npos) return 1;
  if (end == 0) return 0;
  const StringView names = buffer.substr(1, end - 1);  // a NUL in the first place separates nothing
  const auto separators = static_cast<std::int32_t>(std::count(names.begin(), names.end(), u'\0'));
  return std::max(separators, 1);
}

}  // namespace tornby::dialogs
