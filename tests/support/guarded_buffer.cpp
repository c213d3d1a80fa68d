#include "support/guarded_buffer.h"

#include <new>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace tornby::testing {
namespace {

#ifdef _WIN32
std::size_t page_size() {
  SYSTEM_INFO info{};
  ::GetSystemInfo(&info);
  return info.dwPageSize;
}
std::uint8_t* reserve(std::size_t size) {
  return static_cast<std::uint8_t*>(::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS));
}
bool open(std::uint8_t* start, std::size_t size) {
  DWORD earlier = 0;
  return ::VirtualProtect(start, size, PAGE_READWRITE, &earlier) != 0;
}
void release(std::uint8_t* start, std::size_t) {
  ::VirtualFree(start, 0, MEM_RELEASE);
}
#else
std::size_t page_size() {
  return static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}
std::uint8_t* reserve(std::size_t size) {
  void* start = ::mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return start == MAP_FAILED ? nullptr : static_cast<std::uint8_t*>(start);
}
bool open(std::uint8_t* start, std::size_t size) {
  return ::mprotect(start, size, PROT_READ | PROT_WRITE) == 0;
}
void release(std::uint8_t* start, std::size_t size) {
  ::munmap(start, size);
}
#endif

}  // namespace

GuardedBuffer::GuardedBuffer(std::size_t capacity) {
  const std::size_t page = page_size();
  usable_size_ = (capacity + page - 1) / page * page;
  whole_size_ = usable_size_ + 2 * page;
  whole_ = reserve(whole_size_);
  if (!whole_ || !open(whole_ + page, usable_size_)) throw std::bad_alloc();
  usable_ = whole_ + page;
}

GuardedBuffer::~GuardedBuffer() {
  release(whole_, whole_size_);
}

}  // namespace tornby::testing
