// Window handles where the interfaces have numbers.
#pragma once

#include <cstdint>

struct HWND__;  // what an HWND points to

namespace tornby {

/// The handle as a number. The system uses 32 bits of a handle in 64-bit programs too.
inline std::int32_t window_number(HWND__* window) {
  return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(window));
}

}  // namespace tornby
