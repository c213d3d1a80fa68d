#include "automation/com/help.h"

#include <shellapi.h>

#include <algorithm>

#include "automation/com/error_edge.h"
#include "automation/server/module.h"

namespace tornby::automation {
namespace {

/// As an address has it: other characters in their UTF-8 form, by two digits a byte.
std::wstring as_address(const std::wstring& path) {
  std::string bytes(path.size() * 3, '\0');
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, path.data(), static_cast<int>(path.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  std::wstring address = L"file:///";
  for (const char byte : bytes.substr(0, static_cast<std::size_t>(std::max(size, 0)))) {
    constexpr const wchar_t* digits = L"0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(byte);
    if (byte == '\\') {
      address += L'/';
    } else if (code <= ' ' || code >= 0x7F || byte == '%' || byte == '#' || byte == '?') {
      address += L'%';
      address += digits[code >> 4];
      address += digits[code & 15];
    } else {
      address += static_cast<wchar_t>(byte);
    }
  }
  return address;
}

/// Of a function of the shell, which answers with a number as an instance.
void expect_success(HINSTANCE answer) {
  constexpr INT_PTR last_failure = 32;
  const auto number = reinterpret_cast<INT_PTR>(answer);
  if (number <= last_failure) throw ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(number)));
}

}  // namespace

std::wstring help_file() {
  std::wstring path = module_path();
  path.resize(path.find_last_of(L'\\') + 1);
  return path + L"tornby.html";
}

DWORD help_context(REFIID iid) {
  ComPtr<ITypeInfo> info;
  DWORD context = 0;
  if (FAILED(load_type_library()->GetTypeInfoOfGuid(iid, info.out()))) return 0;
  info->GetDocumentation(MEMBERID_NIL, nullptr, nullptr, &context, nullptr);
  return context;
}

void show_help(HWND owner, DWORD context) {
  const std::wstring file = help_file();
  const std::wstring address = L'"' + as_address(file) + L'#' + std::to_wstring(context) + L'"';
  wchar_t browser[MAX_PATH] = {};
  // The browser itself: the system, asked to open an address of a file, forgets the anchor.
  expect_success(::FindExecutableW(file.c_str(), nullptr, browser));
  expect_success(::ShellExecuteW(owner, L"open", browser, address.c_str(), nullptr, SW_SHOWNORMAL));
}

}  // namespace tornby::automation
