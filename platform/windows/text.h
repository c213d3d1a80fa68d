// Text as the ANSI entry points take and give it.
#pragma once

#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace tornby::windows {

inline std::string ansi(StringView text) {
  const Bytes bytes = native_code_page().encode(text);
  return std::string(bytes.begin(), bytes.end());
}

inline String wide_text(std::string_view bytes) {
  return native_code_page().decode(ByteView(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

}  // namespace tornby::windows
