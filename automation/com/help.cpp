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
  const std::wstring address = as_address(help_file()) + L'#' + std::to_wstring(context);
  const auto result =
      reinterpret_cast<INT_PTR>(::ShellExecuteW(owner, L"open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
  constexpr INT_PTR failures = 32;
  if (result <= failures) throw ComError(HRESULT_FROM_WIN32(static_cast<DWORD>(result)));
}

}  // namespace tornby::automation
