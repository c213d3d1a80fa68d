#include "platform/large_buffer.h"

#include <new>

#include "platform/windows/system.h"

namespace tornby {
namespace {

/// Null for who may not have large pages: few accounts may.
void* in_large_pages(std::size_t size) {
  const std::size_t page = ::GetLargePageMinimum();
  if (page == 0 || size < page) return nullptr;
  const std::size_t whole = (size + page - 1) / page * page;
  if (whole < size) return nullptr;
  return ::VirtualAlloc(nullptr, whole, MEM_RESERVE | MEM_COMMIT | MEM_LARGE_PAGES, PAGE_READWRITE);
}

}  // namespace

LargeBuffer::LargeBuffer(std::size_t size) : memory_(in_large_pages(size)), length_(size) {
  if (!memory_) memory_ = ::VirtualAlloc(nullptr, size == 0 ? 1 : size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  if (!memory_) throw std::bad_alloc();
  data_ = static_cast<std::uint8_t*>(memory_);
}

LargeBuffer::~LargeBuffer() {
  ::VirtualFree(memory_, 0, MEM_RELEASE);
}

}  // namespace tornby
