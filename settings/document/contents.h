// The text of a document, and its groups and keys while it is plain.
//
// A document is plain when it looks as SaveSetting writes it: blocks "<GROUP>", lines of "<KEY>value</KEY>",
// "</GROUP>", each tag in upper case, each name used once in its place and no name for a group and for a key, values
// without angle brackets, no empty line but between blocks. Then there is one list of groups in the order of the text,
// each a list of keys with their values, and one table of all names, by which both are found without the text. Every
// group knows how many line breaks stand before it, so the text is exactly that of the lists, one behind the other.
//
// A key is read by finding two names. A key is set by changing one value and moving its group to the end of the list;
// what the document's rules do to empty lines is then done to the counts of line breaks. Nothing that is not plain is
// ever put into the lists: where a name or value would make a difference to plain searching (brackets, a value that
// also occurs in its tag, a group named in other than upper case, a name of both kinds), the answer is "ask the text".
//
// The text is made of the lists when somebody asks for it, and kept until the next change; the lists are made of the
// text when a key is first read or set after somebody changed the text. So a program that reads and sets keys pays for
// those alone, and all other members work on the text as if there were no lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <optional>
#include <vector>

#include "base/key_index.h"
#include "base/text.h"

namespace tornby::document {

class Contents {
 public:
  Contents() = default;
  Contents(const Contents& other) : text_(other.text()) {}
  Contents(Contents&&) = default;
  Contents& operator=(const Contents& other) { return *this = Contents(other); }
  Contents& operator=(Contents&&) = default;
  ~Contents() = default;

  const String& text() const;
  void assign(String text);

  /// The key's value, `default_value` when it is not there, nothing when only the text can tell.
  std::optional<StringView> get(StringView group, StringView key, StringView default_value);

  /// False, and nothing is changed, when it has to be done to the text. A failure changes nothing either.
  bool set(StringView group, StringView key, StringView value);

 private:
  struct Key {
    std::size_t name;
    String value;
  };
  struct Group {
    std::size_t name;
    std::size_t breaks_before;
    std::vector<Key> keys;
    KeyIndex index;
  };
  using Groups = std::list<Group>;
  struct Name {
    String text;
    std::uint32_t hash;
    bool of_group;
    Groups::iterator group;
  };
  enum class State { unknown, plain, unusual };

  bool is_plain();
  bool parse();
  bool parse_group(StringView& rest, std::size_t breaks_before);
  std::size_t find_name(StringView name, std::uint32_t hash) const;
  std::size_t add_name(StringView name, std::uint32_t hash);
  Key* find_key(Group& group, std::size_t name);
  void add_key(Group& group, std::size_t name, StringView value);
  Groups make_group(std::size_t name, std::size_t breaks_before) const;
  void append_group(Groups group);
  void move_to_end(Groups::iterator group);
  void forget_lists();

  mutable String text_;
  mutable bool text_is_old_ = false;
  State state_ = State::unknown;
  Groups groups_;
  std::size_t breaks_at_end_ = 0;
  bool even_breaks_ = true;  // none before the first group, one before each other
  std::vector<Name> names_;
  KeyIndex index_;  // of the names
};

}  // namespace tornby::document
