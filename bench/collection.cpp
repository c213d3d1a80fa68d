// ValueCollection beside Boost.MultiIndex, which is given the same to do: shared pairs in the order of adding, found by
// position and by key, letters in any case. Names are operation/who/pairs, and the time is that of all pairs; pairs are
// looked up in an order that jumps about. Adding includes the end of the collection, and removing the adding.
#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>
#include <memory>
#include <string>
#include <vector>

#include "base/letter_case.h"
#include "bench/measure.h"
#include "settings/ValueCollection.h"

namespace {

using tornby::String;
using tornby::StringView;
using tornby::Variant;

struct Pair {
  String key;
  String value;
};

struct Hash {
  std::size_t operator()(StringView key) const {
    std::uint32_t hash = 2166136261;  // FNV-1a
    for (const char16_t unit : key) hash = (hash ^ tornby::upper(unit)) * 16777619;
    return hash;
  }
};

struct Equal {
  bool operator()(StringView a, StringView b) const { return tornby::equal_ignoring_case(a, b); }
};

class MultiIndex {
 public:
  bool add(StringView key, StringView value) {
    return pairs_.push_back(std::make_shared<Pair>(Pair{String(key), String(value)})).second;
  }
  std::shared_ptr<Pair> item(StringView key) const {
    const auto& keys = pairs_.get<1>();
    const auto found = keys.find(key);
    return found == keys.end() ? nullptr : *found;
  }
  std::shared_ptr<Pair> item(std::int32_t position) const { return pairs_[static_cast<std::size_t>(position - 1)]; }
  bool exist(StringView key) const { return pairs_.get<1>().find(key) != pairs_.get<1>().end(); }
  void remove(StringView key) { pairs_.get<1>().erase(pairs_.get<1>().find(key)); }
  void walk() const {
    for (std::shared_ptr<Pair> pair : pairs_) benchmark::DoNotOptimize(pair);  // held, as ours is
  }

 private:
  using Key = boost::multi_index::member<Pair, String, &Pair::key>;
  boost::multi_index_container<std::shared_ptr<Pair>,
                               boost::multi_index::indexed_by<boost::multi_index::random_access<>,
                                                              boost::multi_index::hashed_unique<Key, Hash, Equal>>>
      pairs_;
};

class Ours {
 public:
  bool add(StringView key, StringView value) { return values_.Add(key, value) != nullptr; }
  auto item(const Variant& index) const { return values_.Item(index); }
  bool exist(StringView key) const { return values_.Exist(key); }
  void remove(const Variant& index) { values_.Remove(index); }
  void walk() const {
    for (const auto& pair : values_) benchmark::DoNotOptimize(pair);
  }

 private:
  tornby::ValueCollection values_;
};

template <class Collection>
void fill(Collection& collection, const std::vector<String>& keys) {
  for (const String& key : keys) benchmark::DoNotOptimize(collection.add(key, u"value"));
}

/// A collection, its keys, and the same as a caller has them, in an order that jumps about and in other letter case.
template <class Collection, class Key>
struct Filled {
  Collection collection;
  std::vector<String> keys, asked;
  std::vector<Key> asked_as_index;

  explicit Filled(std::size_t pairs) {
    for (std::size_t i = 0; i < pairs; ++i) {
      keys.push_back(u"Key" + tornby::widen(std::to_string(i)));
      asked.push_back(u"kEY" + tornby::widen(std::to_string(i * 7919 % pairs)));
      asked_as_index.emplace_back(asked.back());
    }
    fill(collection, keys);
  }
};

template <class Collection, class Key>
void add_all(const std::string& who) {
  using Given = Filled<Collection, Key>;
  const auto run = [&who](const char* name, void (*step)(const Given&, std::size_t)) {
    bench::add(
        std::string(name) + "/" + who, {16, 1000, 100'000},
        [](std::size_t pairs) { return std::make_unique<Given>(pairs); },
        [step](const std::unique_ptr<Given>& given, std::size_t pairs) { step(*given, pairs); });
  };
  run("add", [](const Given& given, std::size_t) {
    Collection collection;
    fill(collection, given.keys);
  });
  run("remove", [](const Given& given, std::size_t) {
    Collection collection;
    fill(collection, given.keys);
    for (const Key& key : given.asked_as_index) collection.remove(key);
  });
  run("key", [](const Given& given, std::size_t) {
    for (const Key& key : given.asked_as_index) benchmark::DoNotOptimize(given.collection.item(key));
  });
  run("exist", [](const Given& given, std::size_t) {
    for (const String& key : given.asked) benchmark::DoNotOptimize(given.collection.exist(key));
  });
  run("position", [](const Given& given, std::size_t pairs) {
    for (std::size_t i = 0; i < pairs; ++i)
      benchmark::DoNotOptimize(given.collection.item(static_cast<std::int32_t>(i * 7919 % pairs + 1)));
  });
  run("walk", [](const Given& given, std::size_t) { given.collection.walk(); });
}

const bool added = [] {
  add_all<Ours, Variant>("ValueCollection");
  add_all<MultiIndex, String>("MultiIndex");
  return true;
}();

}  // namespace
