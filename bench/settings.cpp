// Reading and setting one key, the keys of a document in turn. Names are group/who/keys, and the documents have 20
// groups of 20 keys and 1000 groups of 100; the first of a group is what the others are compared with.
//
// "load" and "save" are of a text in memory, the first with one key read.
#define SI_NO_CONVERSION   // the texts here are ASCII
#define SI_IMPLEMENTATION  // the package has it compiled for the host alone
#include <SimpleIni.h>

#include <cstdint>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "settings/XML_Settings.h"

namespace {

struct Shape {
  int groups;
  int keys;
};

Shape shape_of(std::size_t keys) {
  return keys == 400 ? Shape{20, 20} : Shape{1000, 100};
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
    tornby::String& text = text_;
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
    return 0;
  }
  std::size_t load(std::size_t) {
    tornby::XML_Settings settings;
    settings.SetContents(text_);
    return settings.GetSetting(u"GROUP7", u"KEY7", u"").size();
  }
  std::size_t save(std::size_t i) {
    set(i);
    return settings_.GetContents().size();
  }

 private:
  tornby::String text_;
  tornby::XML_Settings settings_;
  std::vector<std::pair<tornby::String, tornby::String>> keys_;
};

class Ini {
 public:
  explicit Ini(const Shape& shape) : keys_(all_keys(shape)) {
    for (const auto& [group, key] : keys_) ini_.SetValue(group.c_str(), key.c_str(), "value");
    ini_.Save(text_);
  }
  std::size_t get(std::size_t i) {
    const auto& [group, key] = keys_[i % keys_.size()];
    return std::string(ini_.GetValue(group.c_str(), key.c_str(), "")).size();
  }
  std::size_t set(std::size_t i) {
    const auto& [group, key] = keys_[i % keys_.size()];
    return static_cast<std::size_t>(ini_.SetValue(group.c_str(), key.c_str(), i % 2 == 0 ? "other" : "value"));
  }
  std::size_t load(std::size_t) {
    CSimpleIniA ini;
    ini.LoadData(text_);
    return std::string(ini.GetValue("GROUP7", "KEY7", "")).size();
  }
  std::size_t save(std::size_t i) {
    set(i);
    std::string text;
    ini_.Save(text);
    return text.size();
  }

 private:
  CSimpleIniA ini_;
  std::string text_;
  std::vector<std::pair<std::string, std::string>> keys_;
};

class Xml {
 public:
  explicit Xml(const Shape& shape) : root_(document_.append_child("settings")), keys_(all_keys(shape)) {
    for (int group = 0; group < shape.groups; ++group) {
      pugi::xml_node node = root_.append_child(name("GROUP", group).c_str());
      for (int key = 0; key < shape.keys; ++key) node.append_child(name("KEY", key).c_str()).text().set("value");
    }
    text_ = text();
  }
  std::size_t get(std::size_t i) { return std::string(find(i).text().get()).size(); }
  std::size_t set(std::size_t i) { return find(i).text().set(i % 2 == 0 ? "other" : "value"); }
  std::size_t load(std::size_t) {
    pugi::xml_document document;
    document.load_buffer(text_.data(), text_.size());
    return std::string(document.child("settings").child("GROUP7").child("KEY7").text().get()).size();
  }
  std::size_t save(std::size_t i) {
    set(i);
    return text().size();
  }

 private:
  pugi::xml_node find(std::size_t i) const {
    const auto& [group, key] = keys_[i % keys_.size()];
    return root_.child(group.c_str()).child(key.c_str());
  }

  std::string text() const {
    struct Writer final : pugi::xml_writer {
      std::string text;
      void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
    } writer;
    document_.save(writer);
    return writer.text;
  }

  pugi::xml_document document_;
  pugi::xml_node root_;
  std::string text_;
  std::vector<std::pair<std::string, std::string>> keys_;
};

template <class Document>
void add_all(const std::string& who) {
  struct Opened {
    Document document;
    std::size_t steps = 0;
  };
  const auto run = [&who](const char* name, std::size_t (Document::*action)(std::size_t)) {
    const auto step = [action](const std::unique_ptr<Opened>& opened, std::size_t) {
      benchmark::DoNotOptimize((opened->document.*action)(opened->steps++));
    };
    const auto open = [step](std::size_t keys) {
      std::unique_ptr<Opened> opened(new Opened{Document(shape_of(keys))});
      for (int i = 0; i < 3; ++i) step(opened, keys);  // what is made at first use is there
      return opened;
    };
    bench::add(std::string(name) + "/" + who, {400, 100'000}, open, step);
  };
  run("get", &Document::get);
  run("set", &Document::set);
  run("load", &Document::load);
  run("save", &Document::save);
}

const bool added = [] {
  add_all<Ours>("XML_Settings");
  add_all<Ini>("SimpleIni");
  add_all<Xml>("pugixml");
  return true;
}();

}  // namespace
