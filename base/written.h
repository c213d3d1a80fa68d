// Text written where it stays: one allocation, which nobody clears first.
#pragma once

#include <cstddef>
#include <exception>

#include "base/text.h"

namespace tornby {

/// The text that `write(place)` writes, which has room for `most` units there and returns how many they are. What it
/// throws comes through.
template <class Write>
String written(std::size_t most, Write write) {
  String text;
#ifdef __cpp_lib_string_resize_and_overwrite
  std::exception_ptr failure;  // the string lets nothing through
  text.resize_and_overwrite(most, [&](char16_t* place, std::size_t) -> std::size_t {
    try {
      return write(place);
    } catch (...) {
      failure = std::current_exception();
      return 0;
    }
  });
  if (failure) std::rethrow_exception(failure);
#else  // before C++23
  text.resize(most);
  text.resize(write(text.data()));
#endif
  return text;
}

}  // namespace tornby
