#include "platform/room.h"

#include <new>

#include "platform/windows/system.h"

namespace tornby {

void require_room(std::size_t size) {
  void* const memory = ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  if (!memory) throw std::bad_alloc();
  ::VirtualFree(memory, 0, MEM_RELEASE);
}

}  // namespace tornby
