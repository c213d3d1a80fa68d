#include "platform/posix/file_name.h"

#include "base/runtime_error.h"

namespace tornby::posix {
namespace {

bool is_high_surrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool is_low_surrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

void append_utf8(std::string& out, char32_t point) {
  const auto byte = [&out](char32_t value) { out += static_cast<char>(value); };
  if (point < 0x80) {
    byte(point);
  } else if (point < 0x800) {
    byte(0xC0 | point >> 6);
    byte(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    byte(0xE0 | point >> 12);
    byte(0x80 | (point >> 6 & 0x3F));
    byte(0x80 | (point & 0x3F));
  } else {
    byte(0xF0 | point >> 18);
    byte(0x80 | (point >> 12 & 0x3F));
    byte(0x80 | (point >> 6 & 0x3F));
    byte(0x80 | (point & 0x3F));
  }
}

}  // namespace

std::string file_name(StringView name) {
  if (name.empty()) throw RuntimeError(StandardError::bad_file_name);
  std::string out;
  out.reserve(name.size());
  for (std::size_t i = 0; i < name.size(); ++i) {
    char32_t point = name[i];
    if (is_high_surrogate(point) && i + 1 < name.size() && is_low_surrogate(name[i + 1]))
      point = 0x10000 + ((point - 0xD800) << 10) + (name[++i] - 0xDC00u);
    else if (point == 0 || is_high_surrogate(point) || is_low_surrogate(point))
      throw RuntimeError(StandardError::bad_file_name);
    append_utf8(out, point);
  }
  return out;
}

}  // namespace tornby::posix
