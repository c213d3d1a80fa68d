// Memory for a buffer that may be as large as a file.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tornby {

/// Memory of any content. What is never touched costs nothing but address space; the rest is had from the system in
/// pieces as large as it gives, 2 MiB where it can, because each piece costs an interruption.
class LargeBuffer {
 public:
  /// Raises std::bad_alloc when the process has no room for it.
  explicit LargeBuffer(std::size_t size);
  ~LargeBuffer();
  LargeBuffer(const LargeBuffer&) = delete;
  LargeBuffer& operator=(const LargeBuffer&) = delete;

  std::uint8_t* data() const { return data_; }

 private:
  void* memory_;
  std::size_t length_;  // of what was had from the system
  std::uint8_t* data_;
};

}  // namespace tornby
