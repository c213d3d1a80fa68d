#include "base/key_index.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace tornby {

void KeyIndex::add(std::uint32_t hash, std::size_t place) {
  if (place > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("too many items");
  if (3 * (count_ + 1) > 2 * table_.size()) make_room();
  enter({hash, static_cast<std::uint32_t>(place)});
  ++count_;
}

void KeyIndex::enter(const Entry& entry) {
  std::size_t i = entry.hash & mask();
  while (table_[i].hash != 0) i = (i + 1) & mask();
  table_[i] = entry;
}

void KeyIndex::make_room() {
  std::vector<Entry> earlier(std::max<std::size_t>(8, 2 * table_.size()));
  table_.swap(earlier);
  for (const Entry& entry : earlier)
    if (entry.hash != 0) enter(entry);
}

std::size_t KeyIndex::index_of(std::uint32_t hash, std::size_t place) const {
  std::size_t i = hash & mask();
  while (table_[i].hash != hash || table_[i].place != place) i = (i + 1) & mask();
  return i;
}

void KeyIndex::remove(std::uint32_t hash, std::size_t place) {
  std::size_t gap = index_of(hash, place);
  // What follows moves up, unless it would come to stand before the entry that its hash names.
  for (std::size_t i = (gap + 1) & mask(); table_[i].hash != 0; i = (i + 1) & mask()) {
    if (((i - table_[i].hash) & mask()) < ((i - gap) & mask())) continue;
    table_[gap] = table_[i];
    gap = i;
  }
  table_[gap] = {};
  --count_;
}

void KeyIndex::move(std::uint32_t hash, std::size_t place, std::size_t to) {
  table_[index_of(hash, place)].place = static_cast<std::uint32_t>(to);
}

}  // namespace tornby
