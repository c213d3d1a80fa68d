// Message boxes.
#pragma once

#include <cstdint>

#include <tornby/base/text.h>

namespace tornby {

enum class BoxButtons : std::uint32_t { ok = 0, abort_retry_ignore = 2 };
enum class BoxIcon : std::uint32_t { none = 0, error = 0x10 };
enum class BoxAnswer : std::int32_t { none = 0, ok = 1, cancel = 2, abort = 3, retry = 4, ignore = 5 };

struct BoxRequest {
  std::int32_t owner = 0;  // a window's handle
  String text;
  String caption;
  BoxButtons buttons = BoxButtons::ok;
  BoxIcon icon = BoxIcon::none;
};

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;

  /// Shows the box and returns the button chosen. When no box can be shown, because the system has none or the owner is
  /// no window any more, the answer is none of the buttons.
  virtual BoxAnswer show(const BoxRequest& request) = 0;
};

MessageBoxes& native_message_boxes();

}  // namespace tornby
