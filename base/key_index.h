// Finds the places of items by their keys.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <tornby/base/hashing.h>
#include <tornby/base/text.h>

namespace tornby {

/// An open table of hashes and places, numbers that the owner gives. The items have their keys themselves, so looking
/// up makes nothing.
class KeyIndex {
 public:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  KeyIndex() = default;
  KeyIndex(KeyIndex&& other) noexcept { *this = std::move(other); }
  KeyIndex& operator=(KeyIndex&& other) noexcept {
    table_ = std::exchange(other.table_, {});
    count_ = std::exchange(other.count_, 0);
    return *this;
  }

  /// Of the key in upper case. Never 0.
  static std::uint32_t hash(StringView key) { return std::max(hashing::hash_ignoring_case(key), std::uint32_t{1}); }

  /// The first place with this hash that `is_it` accepts; `none` without one.
  template <class IsIt>
  std::size_t find(std::uint32_t hash, IsIt is_it) const {
    if (table_.empty()) return none;
    const Entry* const table = table_.data();
    const std::size_t last = mask();
    for (std::size_t i = hash & last;; i = (i + 1) & last) {
      const std::size_t place = table[i].place;
      if (table[i].hash == hash && is_it(place)) return place;
      if (table[i].hash == 0) return none;
    }
  }

  /// A failure leaves everything as it was.
  void add(std::uint32_t hash, std::size_t place);

  /// What was added so.
  void remove(std::uint32_t hash, std::size_t place);
  void move(std::uint32_t hash, std::size_t place, std::size_t to);

 private:
  struct Entry {
    std::uint32_t hash = 0;  // 0 in a free entry
    std::uint32_t place = 0;
  };

  std::size_t mask() const { return table_.size() - 1; }
  std::size_t index_of(std::uint32_t hash, std::size_t place) const;
  void enter(const Entry& entry);
  void make_room();

  std::vector<Entry> table_;  // a power of two, at most two thirds full
  std::size_t count_ = 0;
};

}  // namespace tornby
