// What the fuzz targets share. A target reads its decisions from a run of bytes, does something with a part of the
// library, and ends the process where the result is wrong; the sanitizers end it where memory is.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <utility>

#include "base/runtime_error.h"
#include "base/text.h"

namespace tornby::fuzz {

/// The bytes, taken one after another. Where none is left they are zeros.
class Input {
 public:
  explicit Input(ByteView bytes) : bytes_(bytes) {}

  std::uint8_t byte() {
    if (bytes_.empty()) return 0;
    const std::uint8_t first = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return first;
  }
  /// A number below `count`, which is at most 256.
  unsigned below(unsigned count) { return byte() % count; }
  bool one_in(unsigned count) { return below(count) == count - 1; }
  std::uint32_t word() {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | byte();
    return value;
  }

  ByteView take(std::size_t count) {
    const ByteView taken = bytes_.first(std::min(count, bytes_.size()));
    bytes_ = bytes_.subspan(taken.size());
    return taken;
  }
  ByteView rest() { return take(bytes_.size()); }
  bool empty() const { return bytes_.empty(); }

  /// Characters of one byte each, but where the byte is 0xFF: then the two after it are the character.
  String text(std::size_t most) {
    String text;
    while (text.size() < most && !empty()) {
      const unsigned first = byte();
      if (first == 0xFF) {
        const unsigned high = byte();
        text += static_cast<char16_t>(high << 8 | byte());
      } else {
        text += static_cast<char16_t>(first);
      }
    }
    return text;
  }

 private:
  ByteView bytes_;
};

/// The number of the run-time error that `action` raises; 0 when it raises none.
template <class Action>
std::int32_t raised(Action action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.number();
  }
  return 0;
}

inline void require(bool holds, const char* what, int line) {
  if (holds) return;
  std::fprintf(stderr, "fuzz: line %d: %s does not hold\n", line, what);
  std::abort();
}
#define REQUIRE(condition) ::tornby::fuzz::require((condition), #condition, __LINE__)

// One of these per file of the same name.
void base64(Input input);
void control_properties(Input input);
void control_streams(Input input);
void dialog_memory(Input input);
void hex(Input input);
void kernels(Input input);
void paths(Input input);
void settings(Input input);
void tag_finder(Input input);

}  // namespace tornby::fuzz
