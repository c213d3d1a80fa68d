#include "platform/large_buffer.h"

#include <sys/mman.h>

#include <new>

namespace tornby {
namespace {

constexpr std::size_t large_page = std::size_t{1} << 21;

}  // namespace

LargeBuffer::LargeBuffer(std::size_t size) : length_(size) {
  const bool large = size >= large_page;
  if (large && __builtin_add_overflow(size, large_page, &length_)) throw std::bad_alloc();
  if (length_ == 0) length_ = 1;
  memory_ = ::mmap(nullptr, length_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory_ == MAP_FAILED) throw std::bad_alloc();
  data_ = static_cast<std::uint8_t*>(memory_);
  if (!large) return;
  data_ += -reinterpret_cast<std::uintptr_t>(memory_) % large_page;
  ::madvise(data_, size, MADV_HUGEPAGE);  // a wish
}

LargeBuffer::~LargeBuffer() {
  ::munmap(memory_, length_);
}

}  // namespace tornby
