#include "controls/windows/text_lines.h"

#include <algorithm>
#include <utility>

namespace tornby::windows {
namespace {

bool ends_line(char16_t unit) {
  return unit == u'\r' || unit == u'\n';
}

/// How much of a line that is too wide stands on it: up to the last blank or behind the last hyphen that fits. A word
/// that is too long stands alone.
std::size_t break_of(const TextLine& line, int width) {
  const auto fits =
      static_cast<std::size_t>(std::upper_bound(line.ends.begin(), line.ends.end(), width) - line.ends.begin());
  for (std::size_t i = fits; i > 0; --i)
    if (line.text[i] == u' ' || line.text[i - 1] == u'-') return i;
  const std::size_t next = line.text.find_first_of(u" -", fits);
  return next == String::npos ? line.text.size() : line.text[next] == u'-' ? next + 1 : next;
}

/// The first units of the line, and the rest, from which the blank between them is gone.
std::pair<TextLine, TextLine> split(const TextLine& line, std::size_t at) {
  const std::size_t next = at + (line.text[at] == u' ' ? 1 : 0);
  TextLine first{line.text.substr(0, at), {line.ends.begin(), line.ends.begin() + static_cast<std::ptrdiff_t>(at)}};
  TextLine rest{line.text.substr(next), {line.ends.begin() + static_cast<std::ptrdiff_t>(next), line.ends.end()}};
  const int start = line.ends[next - 1];
  for (int& end : rest.ends) end -= start;
  if (line.marked < at) first.marked = line.marked;
  if (line.marked != String::npos && line.marked >= next) rest.marked = line.marked - next;
  return {std::move(first), std::move(rest)};
}

TextLine line_of(HDC memory, StringView source, UINT format) {
  TextLine line;
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (source[i] == u'&' && !(format & DT_NOPREFIX)) {
      if (++i == source.size()) break;
      if (source[i] != u'&') line.marked = line.text.size();
    }
    line.text += source[i];
  }
  line.ends.resize(line.text.size());
  SIZE extent = {};
  if (!line.text.empty())
    ::GetTextExtentExPointW(memory, wide(line.text), static_cast<int>(line.text.size()), 0, nullptr, line.ends.data(),
                            &extent);
  return line;
}

}  // namespace

std::vector<TextLine> text_lines(HFONT font, const String& text, int width, UINT format) {
  const MemoryContext memory;
  const Selection selection(memory, font);
  std::vector<TextLine> lines;
  for (auto start = text.begin(); start != text.end();) {
    const auto end = format & DT_SINGLELINE ? text.end() : std::find_if(start, text.end(), ends_line);
    TextLine line = line_of(memory, StringView(start, end), format);
    while ((format & DT_WORDBREAK) && line.width() > width) {
      const std::size_t at = break_of(line, width);
      if (at == line.text.size()) break;
      auto [first, rest] = split(line, at);
      lines.push_back(std::move(first));
      line = std::move(rest);
    }
    lines.push_back(std::move(line));
    start = end;
    if (start != text.end() && *start++ == u'\r' && start != text.end() && *start == u'\n') ++start;
  }
  return lines;
}

}  // namespace tornby::windows
