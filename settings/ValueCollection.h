// Name and value pairs in an ordered, optionally keyed list.
#pragma once

#include <cstdint>
#include <memory>

#include <tornby/base/ordered_collection.h>
#include <tornby/base/text.h>
#include <tornby/base/variant.h>

namespace tornby {

/// One pair: two texts, at first empty, stored without any check. Not to be copied: pairs are shared.
class PropertyClass {
 public:
  PropertyClass() = default;
  PropertyClass(const PropertyClass&) = delete;
  PropertyClass& operator=(const PropertyClass&) = delete;
  PropertyClass(StringView key, StringView value) : key_(key), value_(value) {}

  const String& Value() const { return value_; }
  void Value(StringView value) { value_ = value; }

  const String& Key() const { return key_; }
  /// The pair's own name. A collection that holds the pair keeps finding it under the key that it was added with.
  void Key(StringView value);

 private:
  friend class ValueCollection;
  friend struct KeyOf<std::shared_ptr<PropertyClass>>;

  String key_;
  String value_;
  std::unique_ptr<const String> key_in_collection_;  // once `key_` is another
  bool in_collection_ = false;
};

template <>
struct KeyOf<std::shared_ptr<PropertyClass>> {
  static StringView key(const std::shared_ptr<PropertyClass>& pair) {
    if (pair->key_in_collection_) [[unlikely]]
      return *pair->key_in_collection_;
    return pair->key_;
  }
};

/// Pairs in the order of adding. They are shared objects: one that a caller holds outlives its removal, and a change
/// made to it is seen by all.
///
/// A pair is added, found and taken out in the time that its key takes, times the logarithm of Count at most, whatever
/// the keys: where they stand in memory depends on a number that the process draws once.
///
/// No member reports an error; each says what it returns instead. Positions count from 1; keys are compared without
/// regard to case. An index is a position (a number) or a key (a text, also one made of digits).
class ValueCollection {
 public:
  using Pair = std::shared_ptr<PropertyClass>;
  using Pairs = OrderedCollection<Pair>;

  /// A flag that is kept for callers, at first true. Nothing here consults it.
  bool DisplayError() const { return display_error_; }
  void DisplayError(bool value) { display_error_ = value; }

  /// Changes nothing, neither the pairs nor their order, whatever `order` is: callers rely on the order of adding.
  void Sort([[maybe_unused]] std::int32_t order) const {}

  /// Appends a new pair under its key, or without one when `key` is empty, and returns it; null, with nothing added,
  /// when the key is in use.
  Pair Add(StringView key, StringView value);

  /// The pair at that position or with that key; null when there is none.
  Pair Item(const Variant& index) const {
    const auto* position = std::get_if<std::int32_t>(&index);
    const Pair* found = position ? pairs_.find(std::int64_t{*position}) : find(index);
    return found ? *found : nullptr;
  }

  std::int32_t Count() const { return static_cast<std::int32_t>(pairs_.size()); }

  /// Takes the pair out; without such a pair nothing happens.
  void Remove(const Variant& index);

  /// A walk over the pairs in order. It survives every change of the collection, which must outlive it
  /// (base/ordered_collection.h); so does range-for: `for (const auto& pair : values)`.
  Pairs::Cursor NewEnum() const { return Pairs::Cursor(pairs_); }
  auto begin() const { return pairs_.begin(); }
  auto end() const { return pairs_.end(); }

  /// Whether a pair was added under this key; false for an empty key.
  bool Exist(StringView key) const;

 private:
  const Pair* find(const Variant& index) const;

  Pairs pairs_;
  bool display_error_ = true;
};

}  // namespace tornby
