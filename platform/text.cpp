#include "platform/text.h"

namespace tornby {
namespace {

constexpr char32_t replacement = 0xFFFD;

constexpr bool is_surrogate(char32_t character) {
  return character >= 0xD800 && character <= 0xDFFF;
}

void append(String& text, char32_t character) {
  if (is_surrogate(character) || character > 0x10FFFF) character = replacement;
  if (character <= 0xFFFF) {
    text += static_cast<char16_t>(character);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (character >> 10));
    text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
  }
}

/// The character at `position`, which moves past it.
char32_t next(StringView text, std::size_t& position) {
  const char32_t first = text[position++];
  if (!is_surrogate(first)) return first;
  if (first >= 0xDC00 || position == text.size()) return replacement;
  const char32_t second = text[position];
  if (second < 0xDC00 || second > 0xDFFF) return replacement;
  ++position;
  return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

/// The same of UTF-8. The second byte's bounds keep out overlong forms, surrogates and what is too large (the Unicode
/// standard, table 3-7); a character that breaks off ends where it does.
char32_t next(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(text[position++]);
  if (lead < 0x80) return lead;
  if (lead < 0xC2 || lead > 0xF4) return replacement;
  const int further = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  char32_t character = lead & (0x3Fu >> further);
  for (int i = 0; i < further; ++i) {
    const unsigned byte = position < text.size() ? static_cast<unsigned char>(text[position]) : 0;
    if (byte < least || byte > most) return replacement;
    character = character << 6 | (byte & 0x3F);
    ++position;
    least = 0x80;
    most = 0xBF;
  }
  return character;
}

}  // namespace

String from_utf8(std::string_view text) {
  String result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) append(result, next(text, at));
  return result;
}

std::string to_utf8(StringView text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = next(text, at);
    const int further = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    const unsigned lead = further ? 0xFu << (7 - further) : 0;
    result += static_cast<char>((lead & 0xFF) | character >> (6 * further));
    for (int i = further; i-- > 0;) result += static_cast<char>(0x80 | (character >> (6 * i) & 0x3F));
  }
  return result;
}

String from_wide(std::wstring_view text) {
  if constexpr (sizeof(wchar_t) == sizeof(char16_t)) return String(text.begin(), text.end());
  String result;
  result.reserve(text.size());
  for (const wchar_t character : text) append(result, static_cast<char32_t>(character));
  return result;
}

std::wstring to_wide(StringView text) {
  if constexpr (sizeof(wchar_t) == sizeof(char16_t)) return std::wstring(text.begin(), text.end());
  std::wstring result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) result += static_cast<wchar_t>(next(text, at));
  return result;
}

String from_ansi(std::string_view bytes, const AnsiCodePage& code_page) {
  return code_page.decode(ByteView(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

std::string to_ansi(StringView text, const AnsiCodePage& code_page) {
  const Bytes bytes = code_page.encode(text);
  return std::string(bytes.begin(), bytes.end());
}

}  // namespace tornby
