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

#include "base/hashing.h"
#include "base/text.h"

namespace tornby::document {

/// The hash (base/hashing.h) of a sequence of characters that grows at both ends and shrinks at its front, a step at a
/// time.
class SequenceHash {
 public:
  std::uint64_t value() const { return value_; }

  void push_back(char16_t unit) {
    value_ = hashing::reduced(product(value_, point_->value) + digit(unit));
    power_ = product(power_, point_->value);
  }
  void push_front(char16_t unit) {
    value_ = hashing::reduced(value_ + product(digit(unit), power_));
    power_ = product(power_, point_->value);
  }
  void pop_front(char16_t unit) {
    power_ = product(power_, point_->inverse);
    value_ = hashing::reduced(value_ + hashing::prime - product(digit(unit), power_));
  }

 private:
  static std::uint64_t product(std::uint64_t a, std::uint64_t b) { return hashing::product(a, b); }
  static std::uint64_t digit(char16_t unit) { return unit + std::uint64_t{1}; }

  const hashing::Point* point_ = &hashing::Point::of_process();
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
