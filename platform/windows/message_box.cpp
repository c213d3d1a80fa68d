#include "platform/message_box.h"

#include "platform/text.h"
#include "platform/windows/system.h"
#include "platform/windows/window_handle.h"

namespace tornby {
namespace {

class WindowsMessageBoxes final : public MessageBoxes {
 public:
  BoxAnswer show(const BoxRequest& request) override {
    const int button = ::MessageBoxA(
        windows::window_handle(request.owner), to_ansi(request.text).c_str(), to_ansi(request.caption).c_str(),
        static_cast<UINT>(request.buttons) | static_cast<UINT>(request.icon) | MB_TASKMODAL);
    return button > 0 ? static_cast<BoxAnswer>(button) : BoxAnswer::none;
  }
};

}  // namespace

MessageBoxes& native_message_boxes() {
  static WindowsMessageBoxes boxes;
  return boxes;
}

}  // namespace tornby
