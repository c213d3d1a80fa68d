#include "settings/document/tag_index.h"

#include <algorithm>

namespace tornby::document {

void TagIndex::sort() {
  std::sort(entries_.begin(), entries_.end());
}

std::optional<std::size_t> TagIndex::first_from(const SequenceHash& hash, std::size_t from) const {
  const auto entry = std::lower_bound(entries_.begin(), entries_.end(), Entry{hash.value(), from});
  if (entry == entries_.end() || entry->hash != hash.value()) return std::nullopt;
  return entry->place;
}

}  // namespace tornby::document
