// Memory that the caller of an interface frees.
#pragma once

#include <algorithm>
#include <memory>
#include <string_view>

#include "automation/com/error_edge.h"

namespace tornby::automation {

struct TaskMemory {
  void operator()(void* block) const { ::CoTaskMemFree(block); }
};

template <class Item>
std::unique_ptr<Item[], TaskMemory> task_array(std::size_t count) {
  auto* block = static_cast<Item*>(::CoTaskMemAlloc(count * sizeof(Item)));
  if (!block && count > 0) throw ComError(E_OUTOFMEMORY);
  std::fill_n(block, count, Item{});
  return std::unique_ptr<Item[], TaskMemory>(block);
}

inline std::unique_ptr<OLECHAR[], TaskMemory> task_text(std::wstring_view text) {
  auto copy = task_array<OLECHAR>(text.size() + 1);
  std::copy(text.begin(), text.end(), copy.get());
  return copy;
}

}  // namespace tornby::automation
