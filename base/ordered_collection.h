// A list in the order of adding, with an optional key for each item.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <tornby/base/hashing.h>
#include <tornby/base/letter_case.h>
#include <tornby/base/runtime_error.h>
#include <tornby/base/text.h>

namespace tornby {

/// Items in the order of adding. Positions count from 1. Keys are unique and compared without regard to case
/// (base/letter_case.h); an item added without a key is reached by position or by walking.
///
/// Found by key in constant time, whatever the keys (base/hashing.h); found by position, and removed, in at most
/// logarithmic time.
///
/// A walk survives every change that its body makes, emptying the collection included: what is removed ahead of it is
/// not met, what is added is met at the end, and nothing is met twice or left out. The collection must outlive the
/// walk.
template <class T>
class OrderedCollection {
 public:
  OrderedCollection() = default;
  OrderedCollection(OrderedCollection&& other) noexcept { *this = std::move(other); }
  OrderedCollection& operator=(OrderedCollection&& other) noexcept {
    slots_ = std::exchange(other.slots_, {});
    index_of_key_ = std::exchange(other.index_of_key_, {});
    counts_ = std::exchange(other.counts_, {});
    dead_ = std::exchange(other.dead_, 0);
    next_number_ = std::max(next_number_, other.next_number_);
    return *this;
  }

  std::size_t size() const { return slots_.size() - dead_; }
  bool empty() const { return size() == 0; }

  /// Appends an item without a key.
  void add(T item) {
    slots_.push_back({next_number_, nullptr, std::move(item)});
    ++next_number_;
    if (dead_ == 0) return;
    try {
      append_count();
    } catch (...) {
      slots_.pop_back();
      throw;
    }
  }

  /// Appends an item under `key`. Raises 457 when the key is in use, and adds nothing.
  void add(T item, StringView key) {
    const auto [entry, is_new] = index_of_key_.try_emplace(upper(key), slots_.size());
    if (!is_new) throw RuntimeError(StandardError::duplicate_key);
    try {
      add(std::move(item));
    } catch (...) {
      index_of_key_.erase(entry);
      throw;
    }
    slots_.back().key = &*entry;
  }

  /// The item at `position`, 1 to `size()`, or with `key`; null when there is none. Valid until the next change.
  const T* find(std::int64_t position) const {
    const std::optional<std::size_t> index = index_of_position(position);
    return index ? &*slots_[*index].item : nullptr;
  }
  const T* find(StringView key) const {
    const auto entry = index_of_key_.find(upper(key));
    return entry == index_of_key_.end() ? nullptr : &*slots_[entry->second].item;
  }

  /// The same, but raises 9 (subscript out of range) or 5 (unknown key) when there is none.
  const T& at(std::int64_t position) const {
    if (const T* item = find(position)) return *item;
    throw RuntimeError(StandardError::subscript_out_of_range);
  }
  const T& at(StringView key) const {
    if (const T* item = find(key)) return *item;
    throw RuntimeError(StandardError::invalid_procedure_call);
  }

  /// Removes the item; false when there is none.
  bool remove(std::int64_t position) {
    const std::optional<std::size_t> index = index_of_position(position);
    if (index) bury(*index);
    return index.has_value();
  }
  bool remove(StringView key) {
    const auto entry = index_of_key_.find(upper(key));
    if (entry == index_of_key_.end()) return false;
    bury(entry->second);
    return true;
  }

  /// A walk over the items.
  class Cursor {
   public:
    explicit Cursor(const OrderedCollection& collection) : collection_(&collection) {}

    /// The next item, or nothing at the end. More may come after the end when items are added.
    std::optional<T> next() {
      const Slot* slot = collection_->first_living(next_number_, hint_);
      if (!slot) return std::nullopt;
      next_number_ = slot->number + 1;
      ++hint_;
      return slot->item;
    }

   private:
    const OrderedCollection* collection_;
    std::uint64_t next_number_ = 0;
    std::size_t hint_ = 0;
  };

  /// For range-for. Each step holds a copy of its item, which therefore outlives its removal.
  class Iterator {
   public:
    using value_type = T;
    using difference_type = std::ptrdiff_t;

    explicit Iterator(const OrderedCollection& collection) : cursor_(collection) { ++*this; }
    const T& operator*() const { return *item_; }
    Iterator& operator++() {
      item_ = cursor_.next();
      return *this;
    }
    void operator++(int) { ++*this; }
    bool operator==(std::default_sentinel_t) const { return !item_.has_value(); }

   private:
    Cursor cursor_;
    std::optional<T> item_;
  };
  Iterator begin() const { return Iterator(*this); }
  std::default_sentinel_t end() const { return {}; }

 private:
  // A removed item leaves a dead slot behind, so that the others keep their places; when half of the slots are dead,
  // the living ones close up. While there are dead slots, a Fenwick tree counts the living ones.
  struct KeyHash {
    std::size_t operator()(const String& key) const {
      return static_cast<std::size_t>(hashing::hash_ignoring_case(key));
    }
  };
  using Keys = std::unordered_map<String, std::size_t, KeyHash>;
  struct Slot {
    std::uint64_t number;  // never used twice, growing
    typename Keys::value_type* key;
    std::optional<T> item;  // empty in a dead slot
  };

  static std::size_t lowest_bit(std::size_t node) { return node & (~node + 1); }

  /// How many of the first `count` slots are living.
  std::size_t living_before(std::size_t count) const {
    std::size_t living = 0;
    for (std::size_t node = count; node > 0; node -= lowest_bit(node)) living += counts_[node];
    return living;
  }

  std::optional<std::size_t> index_of_position(std::int64_t position) const {
    if (position < 1 || static_cast<std::uint64_t>(position) > size()) return std::nullopt;
    auto left = static_cast<std::size_t>(position);
    if (dead_ == 0) return left - 1;
    std::size_t step = 1;
    while (step <= slots_.size() / 2) step *= 2;
    std::size_t node = 0;
    for (; step > 0; step /= 2) {
      if (node + step > slots_.size() || counts_[node + step] >= left) continue;
      node += step;
      left -= counts_[node];
    }
    return node;
  }

  /// The first living slot whose number is at least `number`. `hint` is a guess of its index, and becomes its index.
  const Slot* first_living(std::uint64_t number, std::size_t& hint) const {
    const auto is_first = [&](std::size_t i) {
      return i <= slots_.size() && (i == slots_.size() || slots_[i].number >= number) &&
             (i == 0 || slots_[i - 1].number < number);
    };
    if (!is_first(hint)) {
      const auto earlier = [](const Slot& slot, std::uint64_t wanted) { return slot.number < wanted; };
      hint = static_cast<std::size_t>(std::lower_bound(slots_.begin(), slots_.end(), number, earlier) - slots_.begin());
    }
    if (hint < slots_.size() && !slots_[hint].item) {
      const auto found = index_of_position(static_cast<std::int64_t>(living_before(hint)) + 1);
      hint = found.value_or(slots_.size());
    }
    return hint < slots_.size() ? &slots_[hint] : nullptr;
  }

  void bury(std::size_t index) {
    const bool leaves_no_gap = dead_ == 0 && index + 1 == slots_.size();
    if (dead_ == 0 && !leaves_no_gap) count_all();
    Slot& slot = slots_[index];
    if (slot.key) index_of_key_.erase(index_of_key_.find(slot.key->first));
    slot.key = nullptr;
    [[maybe_unused]] const std::optional<T> removed =
        std::exchange(slot.item, std::nullopt);  // dies last: its end may come back here
    if (leaves_no_gap) {
      slots_.pop_back();
      return;
    }
    ++dead_;
    for (std::size_t node = index + 1; node < counts_.size(); node += lowest_bit(node)) --counts_[node];
    if (dead_ > slots_.size() / 2) close_up();
  }

  void count_all() {
    counts_.assign(1, 0);
    counts_.reserve(slots_.size() + 1);
    for (std::size_t node = 1; node <= slots_.size(); ++node) counts_.push_back(lowest_bit(node));
  }

  void append_count() {
    const std::size_t node = counts_.size();
    std::size_t living = 1;
    for (std::size_t below = 1; below < lowest_bit(node); below *= 2) living += counts_[node - below];
    counts_.push_back(living);
  }

  void close_up() {
    std::erase_if(slots_, [](const Slot& slot) { return !slot.item; });
    dead_ = 0;
    counts_ = {};
    for (std::size_t i = 0; i < slots_.size(); ++i)
      if (slots_[i].key) slots_[i].key->second = i;
  }

  std::vector<Slot> slots_;
  Keys index_of_key_;
  std::vector<std::size_t> counts_;
  std::size_t dead_ = 0;
  std::uint64_t next_number_ = 1;
};

/// A plain ordered list of texts.
using StringCollection = OrderedCollection<String>;

}  // namespace tornby
