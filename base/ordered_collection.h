// A list in the order of adding, with an optional key for each item.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include <tornby/base/key_index.h>
#include <tornby/base/letter_case.h>
#include <tornby/base/runtime_error.h>
#include <tornby/base/text.h>

namespace tornby {

/// What an item's key is: for a text, the text. Other items with keys have a specialisation of their own.
template <class T>
struct KeyOf {
  static StringView key(StringView item) { return item; }
};

/// Items in the order of adding. Positions count from 1. Keys are unique and compared without regard to case
/// (base/letter_case.h); an item added without a key is reached by position or by walking. An item keeps its own key,
/// which does not change while the collection has it.
///
/// Found by key in constant time, whatever the keys (base/hashing.h); found by position, and removed, in at most
/// logarithmic time. What fails leaves the collection as it was.
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
    items_ = std::exchange(other.items_, {});
    marks_ = std::exchange(other.marks_, {});
    keys_ = std::move(other.keys_);
    counts_ = std::exchange(other.counts_, {});
    dead_ = std::exchange(other.dead_, 0);
    next_number_ = std::max(next_number_, other.next_number_);
    return *this;
  }

  std::size_t size() const { return items_.size() - dead_; }
  bool empty() const { return size() == 0; }

  /// Appends an item without a key.
  void add(T item) {
    make_room();
    append(std::move(item), 0);
  }

  /// Appends an item under its key. Raises 457 when the key is in use, and adds nothing.
  void add_with_key(T item) {
    if (!try_add_with_key(std::move(item))) throw RuntimeError(StandardError::duplicate_key);
  }

  /// The same, but returns false when the key is in use.
  bool try_add_with_key(T item) {
    const StringView key = KeyOf<T>::key(item);
    const std::uint32_t hash = KeyIndex::hash(key);
    if (find(key, hash) != KeyIndex::none) return false;
    make_room();
    keys_.add(hash, items_.size());
    append(std::move(item), hash);
    return true;
  }

  /// The item at `position`, 1 to `size()`, or with `key`; null when there is none. Valid until the next change.
  const T* find(std::int64_t position) const {
    const std::optional<std::size_t> index = index_of_position(position);
    return index ? &items_[*index] : nullptr;
  }
  const T* find(StringView key) const {
    const std::size_t index = find(key, KeyIndex::hash(key));
    return index == KeyIndex::none ? nullptr : &items_[index];
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
    const std::size_t index = find(key, KeyIndex::hash(key));
    if (index != KeyIndex::none) bury(index);
    return index != KeyIndex::none;
  }

  /// A walk over the items.
  class Cursor {
   public:
    explicit Cursor(const OrderedCollection& collection) : collection_(&collection) {}

    /// The next item, or nothing at the end. More may come after the end when items are added.
    std::optional<T> next() {
      std::optional<T> item;
      next(item);
      return item;
    }
    void next(std::optional<T>& item) {
      if (!collection_->move_to_living(next_number_, hint_)) return item.reset();
      item = collection_->items_[hint_];
      next_number_ = collection_->marks_[hint_].number + 1;
      ++hint_;
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
      cursor_.next(item_);
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
  // A removed item leaves a dead place behind, so that the others keep theirs; when half of the places are dead, the
  // living ones close up. While there are dead places, a Fenwick tree counts the living ones.
  struct Mark {
    std::uint64_t number;  // never used twice, growing
    std::uint32_t hash;    // of its key; 0 without one
    bool living;
  };

  std::size_t find(StringView key, std::uint32_t hash) const {
    return keys_.find(hash, [&](std::size_t index) { return equal_ignoring_case(KeyOf<T>::key(items_[index]), key); });
  }

  /// For one more item: `append` cannot fail then.
  void make_room() {
    if (items_.size() == items_.capacity()) items_.reserve(std::max<std::size_t>(4, 2 * items_.size()));
    if (marks_.size() == marks_.capacity()) marks_.reserve(items_.capacity());
    if (dead_ > 0 && counts_.size() == counts_.capacity()) counts_.reserve(2 * counts_.size());
  }

  void append(T item, std::uint32_t hash) {
    items_.push_back(std::move(item));
    marks_.push_back({next_number_++, hash, true});
    if (dead_ > 0) append_count();
  }

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
    while (step <= items_.size() / 2) step *= 2;
    std::size_t node = 0;
    for (; step > 0; step /= 2) {
      if (node + step > items_.size() || counts_[node + step] >= left) continue;
      node += step;
      left -= counts_[node];
    }
    return node;
  }

  /// Moves `index`, a guess, to the first living item whose number is at least `number`; false when there is none.
  bool move_to_living(std::uint64_t number, std::size_t& index) const {
    if (index < marks_.size() && marks_[index].number == number && marks_[index].living) return true;
    const auto is_first = [&](std::size_t i) {
      return i <= marks_.size() && (i == marks_.size() || marks_[i].number >= number) &&
             (i == 0 || marks_[i - 1].number < number);
    };
    if (!is_first(index)) {
      const auto earlier = [](const Mark& mark, std::uint64_t wanted) { return mark.number < wanted; };
      index =
          static_cast<std::size_t>(std::lower_bound(marks_.begin(), marks_.end(), number, earlier) - marks_.begin());
    }
    if (index < marks_.size() && !marks_[index].living) {
      const auto found = index_of_position(static_cast<std::int64_t>(living_before(index)) + 1);
      index = found.value_or(marks_.size());
    }
    return index < marks_.size();
  }

  void bury(std::size_t index) {
    const bool leaves_no_gap = dead_ == 0 && index + 1 == items_.size();
    if (dead_ == 0 && !leaves_no_gap) count_all();
    if (marks_[index].hash != 0) keys_.remove(marks_[index].hash, index);
    [[maybe_unused]] const T removed = std::exchange(items_[index], T());  // dies last: its end may come back here
    if (leaves_no_gap) {
      items_.pop_back();
      marks_.pop_back();
      return;
    }
    marks_[index] = {marks_[index].number, 0, false};
    ++dead_;
    for (std::size_t node = index + 1; node < counts_.size(); node += lowest_bit(node)) --counts_[node];
    if (dead_ > items_.size() / 2) close_up();
  }

  void count_all() {
    counts_.assign(1, 0);
    counts_.reserve(items_.size() + 1);
    for (std::size_t node = 1; node <= items_.size(); ++node) counts_.push_back(lowest_bit(node));
  }

  void append_count() {
    const std::size_t node = counts_.size();
    std::size_t living = 1;
    for (std::size_t below = 1; below < lowest_bit(node); below *= 2) living += counts_[node - below];
    counts_.push_back(living);
  }

  void close_up() {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (!marks_[i].living) continue;
      if (marks_[i].hash != 0) keys_.move(marks_[i].hash, i, kept);
      if (i != kept) items_[kept] = std::move(items_[i]);
      marks_[kept++] = marks_[i];
    }
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(kept), items_.end());
    marks_.erase(marks_.begin() + static_cast<std::ptrdiff_t>(kept), marks_.end());
    dead_ = 0;
  }

  std::vector<T> items_;  // one made from nothing at a dead place
  std::vector<Mark> marks_;
  KeyIndex keys_;
  std::vector<std::size_t> counts_;
  std::size_t dead_ = 0;
  std::uint64_t next_number_ = 1;
};

/// A plain ordered list of texts.
using StringCollection = OrderedCollection<String>;

}  // namespace tornby
