// Where the tags of a text stand, by the hash of what they say.
//
// A document may hold a million tags that are never closed. Searching the rest of the text for each one's closing tag
// would take time in the square of its length; the index answers each in logarithmic time. A hash only points to a
// place: whoever takes the place compares the text there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <tornby/base/text.h>

namespace tornby::document {

/// The hash of a sequence of characters that grows at both ends and shrinks at its front, a step at a time.
class SequenceHash {
 public:
  std::uint64_t value() const { return value_; }

  void push_back(char16_t unit) {
    value_ = value_ * base + digit(unit);
    power_ *= base;
  }
  void push_front(char16_t unit) {
    value_ += digit(unit) * power_;
    power_ *= base;
  }
  void pop_front(char16_t unit) {
    power_ *= inverse;
    value_ -= digit(unit) * power_;
  }

 private:
  static constexpr std::uint64_t base = 0x9E3779B97F4A7C15;
  static constexpr std::uint64_t inverse = [] {
    std::uint64_t x = base;  // right in the lowest three bits, and in twice as many after each round
    for (int round = 0; round < 5; ++round) x *= 2 - base * x;
    return x;
  }();
  static_assert(base * inverse == 1);
  static std::uint64_t digit(char16_t unit) { return unit + std::uint64_t{1}; }

  std::uint64_t value_ = 0;
  std::uint64_t power_ = 1;
};

class TagIndex {
 public:
  void add(const SequenceHash& hash, std::size_t place) { entries_.push_back({hash.value(), place}); }

  /// To be called once, after the last `add`.
  void sort();

  /// The first place at or after `from` that was added with this hash.
  std::optional<std::size_t> first_from(const SequenceHash& hash, std::size_t from) const;

 private:
  struct Entry {
    std::uint64_t hash;
    std::size_t place;
    auto operator<=>(const Entry&) const = default;  // NOLINT(modernize-use-nullptr): clang-tidy 14 mistakes its 0
  };
  std::vector<Entry> entries_;
};

/// Adds each tag of the text by what stands between its "<", the last one, and its ">", a character changed by
/// `change`.
template <class Change>
void index_tags(StringView text, TagIndex& index, Change change) {
  constexpr std::size_t none = StringView::npos;
  std::size_t opened = none;
  SequenceHash between;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'<') {
      opened = i;
      between = {};
    } else if (opened == none) {
      continue;
    } else if (text[i] == u'>') {
      index.add(between, opened);
      opened = none;
    } else {
      between.push_back(change(text[i]));
    }
  }
  index.sort();
}

}  // namespace tornby::document
