#include "support/holdings.h"

#include <algorithm>
#include <vector>

#include <windows.h>

#include <psapi.h>  // these two after windows.h
#include <winternl.h>

namespace tornby::testing {
namespace {

const void* process_block() {
  using Query = NTSTATUS(NTAPI*)(HANDLE, PROCESSINFOCLASS, void*, ULONG, ULONG*);
  const auto query = reinterpret_cast<Query>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "NtQueryInformationProcess")));
  PROCESS_BASIC_INFORMATION information{};
  query(::GetCurrentProcess(), ProcessBasicInformation, &information, sizeof information, nullptr);
  return information.PebBaseAddress;
}

BOOL CALLBACK count_window(HWND, LPARAM counter) {
  ++*reinterpret_cast<int*>(counter);
  return TRUE;
}

// The entries with a type in the process's table; the system's own count says nothing under Wine.
int count_drawing_objects() {
  const auto* process = static_cast<const char*>(process_block());
  const char* table = *reinterpret_cast<const char* const*>(process + (sizeof(void*) == 8 ? 0xF8 : 0x94));
  if (!table) return 0;  // a 32-bit process on a 64-bit Windows does not see it
  int count = 0;
  for (int entry = 0; entry < 16384; ++entry) count += *reinterpret_cast<const WORD*>(table + entry * 24 + 14) != 0;
  return count;
}

int count_windows() {
  int count = 0;
  ::EnumThreadWindows(::GetCurrentThreadId(), count_window, reinterpret_cast<LPARAM>(&count));
  ::EnumChildWindows(HWND_MESSAGE, count_window, reinterpret_cast<LPARAM>(&count));
  return count;
}

/// The system's one table gives free places again, the latest first, before it grows. So many menus are made, and more
/// until it has grown for a few in a row: all below the last one is then in use, by others where it is no menu of ours.
int count_user_objects() {
  constexpr int many = 2000, few = 16;
  std::vector<HMENU> menus;
  int highest = 0;
  for (int grown = 0; menus.size() < many || grown < few;) {
    menus.push_back(::CreateMenu());
    const int place = LOWORD(reinterpret_cast<std::uintptr_t>(menus.back())) / 2;
    grown = place > highest || place == 0 ? grown + 1 : 0;  // 0: the table is full
    highest = std::max(highest, place);
  }
  for (const HMENU menu : menus) ::DestroyMenu(menu);
  return highest - static_cast<int>(menus.size());
}

std::size_t private_bytes() {
  PROCESS_MEMORY_COUNTERS counters = {};
  ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

}  // namespace

Holdings Holdings::now() {
  return {count_drawing_objects(), count_windows(), count_user_objects(), next_handle(), private_bytes() / 1024};
}

}  // namespace tornby::testing
