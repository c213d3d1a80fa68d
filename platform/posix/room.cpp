#include "platform/room.h"

#include <sys/mman.h>

#include <new>

namespace tornby {

void require_room(std::size_t size) {
  void* const memory =
      ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  ::munmap(memory, size);
}

}  // namespace tornby
