#include "settings/ValueCollection.h"

namespace tornby {
namespace {

/// Calls `action` with a position or a key; not at all for an empty index.
template <class Action>
void with_index(const Variant& index, Action action) {
  if (const auto* key = std::get_if<String>(&index))
    action(StringView(*key));
  else if (!is_empty(index))
    action(std::int64_t{to_int32(index)});
}

}  // namespace

ValueCollection::Pair ValueCollection::Add(StringView key, StringView value) {
  auto pair = std::make_shared<PropertyClass>();
  pair->Key(key);
  pair->Value(value);
  if (key.empty()) {
    pairs_.add(pair);
  } else {
    if (pairs_.find(key)) return nullptr;
    pairs_.add(pair, key);
  }
  return pair;
}

ValueCollection::Pair ValueCollection::Item(const Variant& index) const {
  Pair found;
  with_index(index, [&](auto where) {
    if (const Pair* pair = pairs_.find(where)) found = *pair;
  });
  return found;
}

void ValueCollection::Remove(const Variant& index) {
  with_index(index, [this](auto where) { pairs_.remove(where); });
}

bool ValueCollection::Exist(StringView key) const {
  return !key.empty() && pairs_.find(key);
}

}  // namespace tornby
