// ValueCollection beside Boost.MultiIndex, which is given the same to do: shared pairs in the order of adding, found by
// position and by key, letters in any case. Names are operation/who/pairs, and the time is that of all pairs; pairs are
// looked up in an order that jumps about. Adding includes the end of the collection, and removing the adding.
#include <benchmark/benchmark.h>

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>
#include <memory>
#include <string>
#include <vector>

#include "base/letter_case.h"
#include "settings/ValueCollection.h"

namespace {

using tornby::String;
using tornby::StringView;
using tornby::ValueCollection;
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
  const auto& all() const { return pairs_; }

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
  const auto& all() const { return values_; }

 private:
  ValueCollection values_;
};

std::vector<String> keys(const benchmark::State& state) {
  std::vector<String> result;
  for (std::int64_t i = 0; i < state.range(0); ++i) result.push_back(u"Key" + tornby::widen(std::to_string(i)));
  return result;
}

/// The same keys as a caller has them, in an order that jumps about and in other letter case.
template <class Key>
std::vector<Key> asked_for(const benchmark::State& state) {
  std::vector<Key> result;
  for (std::int64_t i = 0; i < state.range(0); ++i)
    result.emplace_back(u"kEY" + tornby::widen(std::to_string(i * 7919 % state.range(0))));
  return result;
}

template <class Collection>
void fill(Collection& collection, const std::vector<String>& with) {
  for (const String& key : with) benchmark::DoNotOptimize(collection.add(key, u"value"));
}

template <class Collection>
void add(benchmark::State& state) {
  const auto all = keys(state);
  for (auto _ : state) {
    Collection collection;
    fill(collection, all);
  }
}

template <class Collection, class Key>
void remove(benchmark::State& state) {
  const auto all = keys(state);
  const auto asked = asked_for<Key>(state);
  for (auto _ : state) {
    Collection collection;
    fill(collection, all);
    for (const Key& key : asked) collection.remove(key);
  }
}

template <class Collection, class Key>
void by_key(benchmark::State& state) {
  Collection collection;
  fill(collection, keys(state));
  const auto asked = asked_for<Key>(state);
  for (auto _ : state)
    for (const Key& key : asked) benchmark::DoNotOptimize(collection.item(key));
}

template <class Collection>
void exist(benchmark::State& state) {
  Collection collection;
  fill(collection, keys(state));
  const auto asked = asked_for<String>(state);
  for (auto _ : state)
    for (const String& key : asked) benchmark::DoNotOptimize(collection.exist(key));
}

template <class Collection>
void by_position(benchmark::State& state) {
  Collection collection;
  fill(collection, keys(state));
  for (auto _ : state)
    for (std::int64_t i = 0; i < state.range(0); ++i)
      benchmark::DoNotOptimize(collection.item(static_cast<std::int32_t>(i * 7919 % state.range(0) + 1)));
}

/// Our walk holds each pair while it is the current one.
template <class Collection, class Held>
void walk(benchmark::State& state) {
  Collection collection;
  fill(collection, keys(state));
  for (auto _ : state)
    for (Held pair : collection.all()) benchmark::DoNotOptimize(pair);
}

void run(const char* name, void (*measured)(benchmark::State&)) {
  benchmark::RegisterBenchmark(name, measured)->Arg(16)->Arg(1000)->Arg(100'000)->Unit(benchmark::kNanosecond);
}

const bool added = [] {
  run("add/ValueCollection", add<Ours>);
  run("add/MultiIndex", add<MultiIndex>);
  run("key/ValueCollection", by_key<Ours, Variant>);
  run("key/MultiIndex", by_key<MultiIndex, String>);
  run("exist/ValueCollection", exist<Ours>);
  run("exist/MultiIndex", exist<MultiIndex>);
  run("position/ValueCollection", by_position<Ours>);
  run("position/MultiIndex", by_position<MultiIndex>);
  run("walk/ValueCollection", walk<Ours, const ValueCollection::Pair&>);
  run("walk/MultiIndex", walk<MultiIndex, std::shared_ptr<Pair>>);
  run("remove/ValueCollection", remove<Ours, Variant>);
  run("remove/MultiIndex", remove<MultiIndex, String>);
  return true;
}();

}  // namespace
