// Memory between two pages that nobody may touch: reading or writing one byte too far is a crash, not luck.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tornby::testing {

class GuardedBuffer {
 public:
  /// Room for at least `capacity` bytes.
  explicit GuardedBuffer(std::size_t capacity);
  ~GuardedBuffer();
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;

  /// The first `size` bytes: right behind the lower guard page.
  std::span<std::uint8_t> at_start(std::size_t size) { return {usable_, size}; }
  /// The last `size` bytes: right before the upper guard page.
  std::span<std::uint8_t> at_end(std::size_t size) { return {usable_ + usable_size_ - size, size}; }

 private:
  std::uint8_t* whole_;
  std::size_t whole_size_;
  std::uint8_t* usable_;
  std::size_t usable_size_;
};

}  // namespace tornby::testing
