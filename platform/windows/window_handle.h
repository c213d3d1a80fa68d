// Window handles as numbers: only 32 bits of one count, and they are extended by their sign.
#pragma once

#include <cstdint>

#include "platform/windows/system.h"

namespace tornby::windows {

inline HWND window_handle(std::int32_t number) {
  return reinterpret_cast<HWND>(static_cast<INT_PTR>(number));
}

inline std::int32_t number_of(HWND window) {
  return static_cast<std::int32_t>(reinterpret_cast<INT_PTR>(window));
}

}  // namespace tornby::windows
