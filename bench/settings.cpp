// Reading and setting one key, the keys of a document in turn. Names are group/who/keys, and the documents have 20
// groups of 20 keys and 1000 groups of 100; the first of a group is what the others are compared with.
//
// XML_Settings keeps its text and remembers where its tags stand; the peers have read theirs into an index or a tree.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "settings/XML_Settings.h"

#ifndef _WIN32
#define SI_NO_CONVERSION  // the texts here are ASCII
#include <SimpleIni.h>

#include <pugixml.hpp>
#endif

namespace {

struct Shape {
  int groups;
  int keys;
};

Shape shape_of(const benchmark::State& state) {
  return state.range(0) == 400 ? Shape{20, 20} : Shape{1000, 100};
}

std::string name(const char* kind, int number) {
  return kind + std::to_string(number);
}

/// The names of all keys in an order that jumps about, so that no search profits from the last one.
std::vector<std::pair<std::string, std::string>> all_keys(const Shape& shape) {
  std::vector<std::pair<std::string, std::string>> keys;
  const int count = shape.groups * shape.keys;
  for (int i = 0; i < count; ++i) {
    const int at = static_cast<int>(std::int64_t{i} * 7919 % count);  // a prime: meets each once
    keys.emplace_back(name("GROUP", at / shape.keys), name("KEY", at % shape.keys));
  }
  return keys;
}

class Ours {
 public:
  explicit Ours(const Shape& shape) {
    tornby::String text;
    for (int group = 0; group < shape.groups; ++group) {
      const tornby::String tag = tornby::widen(name("GROUP", group)) + u">";
      text.append(u"<").append(tag).append(u"\r\n");
      for (int key = 0; key < shape.keys; ++key) {
        const tornby::String key_tag = tornby::widen(name("KEY", key)) + u">";
        text.append(u"<").append(key_tag).append(u"value</").append(key_tag).append(u"\r\n");
      }
      text.append(u"</").append(tag).append(u"\r\n");
    }
    settings_.SetContents(text);
    for (const auto& [group, key] : all_keys(shape)) keys_.emplace_back(tornby::widen(group), tornby::widen(key));
  }
  std::size_t get(std::size_t i) {
    const auto& [group, key] = keys_[i % keys_.size()];
    return settings_.GetSetting(group, key, u"").size();
  }
  std::size_t set(std::size_t i) {
    const auto& [group, key] = keys_[i % keys_.size()];
    settings_.SaveSetting(group, key, i % 2 == 0 ? u"other" : u"value");
    return settings_.GetContents().size();
  }

 private:
  tornby::XML_Settings settings_;
  std::vector<std::pair<tornby::String, tornby::String>> keys_;
};

#ifndef _WIN32
class Ini {
 public:
  explicit Ini(const Shape& shape) : keys_(all_keys(shape)) {
    for (const auto& [group, key] : keys_) ini_.SetValue(group.c_str(), key.c_str(), "value");
  }
  std::size_t get(std::size_t i) {
    const auto& [group, key] = keys_[i % keys_.size()];
    return std::string(ini_.GetValue(group.c_str(), key.c_str(), "")).size();
  }
  std::size_t set(std::size_t i) {
    const auto& [group, key] = keys_[i % keys_.size()];
    return static_cast<std::size_t>(ini_.SetValue(group.c_str(), key.c_str(), i % 2 == 0 ? "other" : "value"));
  }

 private:
  CSimpleIniA ini_;
  std::vector<std::pair<std::string, std::string>> keys_;
};

class Xml {
 public:
  explicit Xml(const Shape& shape) : root_(document_.append_child("settings")), keys_(all_keys(shape)) {
    for (int group = 0; group < shape.groups; ++group) {
      pugi::xml_node node = root_.append_child(name("GROUP", group).c_str());
      for (int key = 0; key < shape.keys; ++key) node.append_child(name("KEY", key).c_str()).text().set("value");
    }
  }
  std::size_t get(std::size_t i) { return std::string(find(i).text().get()).size(); }
  std::size_t set(std::size_t i) { return find(i).text().set(i % 2 == 0 ? "other" : "value"); }

 private:
  pugi::xml_node find(std::size_t i) const {
    const auto& [group, key] = keys_[i % keys_.size()];
    return root_.child(group.c_str()).child(key.c_str());
  }

  pugi::xml_document document_;
  pugi::xml_node root_;
  std::vector<std::pair<std::string, std::string>> keys_;
};
#endif

template <class Document>
void get(benchmark::State& state) {
  Document document(shape_of(state));
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(document.get(i++));
}

template <class Document>
void set(benchmark::State& state) {
  Document document(shape_of(state));
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(document.set(i++));
}

void add(const std::string& name, void (*run)(benchmark::State&)) {
  benchmark::RegisterBenchmark(name.c_str(), run)->Arg(400)->Arg(100'000)->Unit(benchmark::kNanosecond);
}

const bool added = [] {
  add("get/XML_Settings", get<Ours>);
#ifndef _WIN32
  add("get/SimpleIni", get<Ini>);
  add("get/pugixml", get<Xml>);
#endif
  add("set/XML_Settings", set<Ours>);
#ifndef _WIN32
  add("set/SimpleIni", set<Ini>);
  add("set/pugixml", set<Xml>);
#endif
  return true;
}();

}  // namespace
