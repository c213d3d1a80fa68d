// The mouse pointer.
#pragma once

namespace tornby {

/// The mouse pointer, while a window of the calling thread is the active one; otherwise nothing happens.
class MousePointer {
 public:
  virtual ~MousePointer() = default;

  /// Shows the hourglass until the pointer is set anew.
  virtual void show_hourglass() const = 0;

  /// Shows the arrow; a window that wants another pointer sets it at the next move of the mouse.
  virtual void show_default() const = 0;
};

const MousePointer& native_pointer();

}  // namespace tornby
