// The settings document's rules, carried out a character and a step at a time: slow, obvious and independent of the
// class, which is compared with it. Positions count from 1, 0 means "not found", and a cut that cannot be made is an
// error, number 5.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "base/text.h"

namespace tornby::testing {

class DocumentReference {
 public:
  using Texts = std::vector<String>;
  using Pairs = std::vector<std::pair<String, String>>;

  String contents;
  String saved;
  int max_elements = 0;
  std::function<void(int&)> progress_max = [](int&) {};
  std::function<void(int&)> progress_current = [](int&) {};

  static String remove_empty_lines(const String& text);
  void insert_group(const String& group, const String& text);
  void save() { saved = remove_empty_lines(contents); }
  std::optional<Texts> extract_block(const String& group);
  Texts extract_block2(const String& name, bool whole) const;
  String get_setting(const String& group, const String& key, const String& otherwise) const;
  void update_recent(const String& path);
  Texts extract_recent();
  void save_setting(const String& group, const String& key, const String& value);
  static String add_new_value(const String& group, const String& key, const String& value, String& block);
  Pairs split_block(const String& text) const;
  static Texts super_split(const String& name, const String& text);
  String get_block(const String& name, bool ignore_case) const;
  String get_structure(const String& name, bool ignore_case) const;
  Texts find_nodes() const;
  String get_node_value(const String& tag) const;

 private:
  struct Found {
    int start = 0;
    int end = 0;
    bool found = false;
    String inner;
  };
  Found find_block(const String& name, const String& text, int start, bool ignore_case, bool trim_one) const;
  static String next_tag_name(const String& text, int position);
};

}  // namespace tornby::testing
