#include "platform/pointer.h"

#include "platform/windows/system.h"

namespace tornby {
namespace {

/// Asking for a pointer makes the system start a desktop; a program without windows shall not need one.
void show(LPSTR cursor) {
  if (::GetActiveWindow()) ::SetCursor(::LoadCursorA(nullptr, cursor));
}

class WindowsPointer final : public MousePointer {
 public:
  void show_hourglass() const override { show(IDC_WAIT); }
  void show_default() const override { show(IDC_ARROW); }
};

}  // namespace

const MousePointer& native_pointer() {
  static const WindowsPointer pointer;
  return pointer;
}

}  // namespace tornby
