// Window handles from their numbers, which are extended by their sign.
#pragma once

#include <cstdint>

#include "platform/window_handle.h"
#include "platform/windows/system.h"

namespace tornby::windows {

inline HWND window_handle(std::int32_t number) {
  return reinterpret_cast<HWND>(static_cast<INT_PTR>(number));
}

}  // namespace tornby::windows
