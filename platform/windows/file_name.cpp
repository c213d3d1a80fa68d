#include "platform/windows/file_name.h"

#include <string_view>

#include "base/runtime_error.h"
#include "platform/code_page.h"
#include "platform/windows/error.h"
#include "platform/windows/system.h"

namespace tornby::windows {
namespace {

std::wstring full_name(const std::wstring& name) {
  std::wstring full(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0) throw file_error(::GetLastError());
    const bool fits = length < full.size();
    full.resize(length);
    if (fits) return full;
  }
}

}  // namespace

std::wstring file_name(StringView name) {
  if (name.empty() || name.find(u'\0') != StringView::npos) throw RuntimeError(StandardError::bad_file_name);
  const AnsiCodePage& page = native_code_page();
  const String known = page.decode(page.encode(name));
  const std::wstring full = full_name(std::wstring(known.begin(), known.end()));
  if (full.starts_with(LR"(\\?\)") || full.starts_with(LR"(\\.\)")) return full;
  return full.starts_with(LR"(\\)") ? LR"(\\?\UNC\)" + full.substr(2) : LR"(\\?\)" + full;
}

std::wstring name_beside(std::wstring name, const wchar_t* ending, int number) {
  std::wstring end = ending;
  if (number > 1) end += std::to_wstring(number);
  constexpr std::size_t longest = 255;
  const std::size_t start = name.rfind(L'\\') + 1;
  if (name.size() - start + end.size() > longest) {
    name.resize(start + longest - end.size());
    if (IS_HIGH_SURROGATE(name.back())) name.pop_back();
  }
  return name + end;
}

}  // namespace tornby::windows
