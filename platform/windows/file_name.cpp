#include "platform/windows/file_name.h"

#include "base/runtime_error.h"
#include "platform/code_page.h"

namespace tornby::windows {

std::string file_name(StringView name) {
  if (name.empty() || name.find(u'\0') != StringView::npos) throw RuntimeError(StandardError::bad_file_name);
  const Bytes bytes = native_code_page().encode(name);
  return std::string(bytes.begin(), bytes.end());
}

}  // namespace tornby::windows
