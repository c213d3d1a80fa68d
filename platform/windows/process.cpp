#include "platform/process.h"

#include "platform/windows/system.h"

namespace tornby {
namespace {

class WindowsProcess final : public Process {
 public:
  bool is_wow64() const override {
    using IsWow64Process = BOOL(WINAPI*)(HANDLE, BOOL*);
    const HMODULE kernel = ::GetModuleHandleA("kernel32");
    if (!kernel) return false;
    // Looked up by name: the oldest systems do not have it.
    const auto query =
        reinterpret_cast<IsWow64Process>(reinterpret_cast<void*>(::GetProcAddress(kernel, "IsWow64Process")));
    BOOL answer = FALSE;
    return query && query(::GetCurrentProcess(), &answer) && answer;
  }
};

}  // namespace

const Process& native_process() {
  static const WindowsProcess process;
  return process;
}

}  // namespace tornby
