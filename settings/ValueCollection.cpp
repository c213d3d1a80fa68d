#include "settings/ValueCollection.h"

namespace tornby {
namespace {

/// The result of `action` with a position or a key; nothing for an empty index.
template <class Action>
auto with_index(const Variant& index, Action action) {
  if (const auto* key = std::get_if<String>(&index)) return action(StringView(*key));
  return is_empty(index) ? decltype(action(std::int64_t{})){} : action(std::int64_t{to_int32(index)});
}

}  // namespace

void PropertyClass::Key(StringView value) {
  if (in_collection_ && !key_in_collection_) key_in_collection_ = std::make_unique<const String>(key_);
  key_ = value;
}

ValueCollection::Pair ValueCollection::Add(StringView key, StringView value) {
  auto pair = std::make_shared<PropertyClass>(key, value);
  if (key.empty()) {
    pairs_.add(pair);
  } else {
    pair->in_collection_ = true;
    if (!pairs_.try_add_with_key(pair)) return nullptr;
  }
  return pair;
}

const ValueCollection::Pair* ValueCollection::find(const Variant& index) const {
  return with_index(index, [this](auto where) { return pairs_.find(where); });
}

void ValueCollection::Remove(const Variant& index) {
  with_index(index, [this](auto where) { return pairs_.remove(where); });
}

bool ValueCollection::Exist(StringView key) const {
  return !key.empty() && pairs_.find(key);
}

}  // namespace tornby
