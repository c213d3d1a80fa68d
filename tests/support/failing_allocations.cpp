#include "support/failing_allocations.h"

#include <cstdlib>
#include <new>

namespace tornby::testing {
namespace {

thread_local AllocationFailure* armed_failure = nullptr;

}  // namespace

AllocationFailure::Armed::Armed(AllocationFailure* failure) {
  armed_failure = failure;
}
AllocationFailure::Armed::~Armed() {
  armed_failure = nullptr;
}

bool AllocationFailure::strikes() {
  AllocationFailure* const failure = armed_failure;
  if (!failure || (failure->happened_ && !failure->lasting_)) return false;
  if (!failure->happened_ && --failure->left_ != 0) return false;
  return failure->happened_ = true;
}

}  // namespace tornby::testing

namespace {

void* allocate(std::size_t size) noexcept {
  return tornby::testing::AllocationFailure::strikes() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* const memory = allocate(size)) return memory;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
