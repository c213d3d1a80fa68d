#include "base/ordered_collection.h"

#include <gtest/gtest.h>

#include <random>

#include "support/errors.h"
#include "support/scale.h"

namespace tornby {
namespace {

using testing::raised_number;

/// A number, and its key where the collection is to have one.
struct Item {
  int value = 0;
  String key;

  bool operator==(int other) const { return value == other; }
  bool operator>(int other) const { return value > other; }
};
using Items = OrderedCollection<Item>;

void add(Items& items, int value, StringView key) {
  items.add_with_key({value, String(key)});
}

}  // namespace

template <>
struct KeyOf<Item> {
  static StringView key(const Item& item) { return item.key; }
};

namespace {

TEST(OrderedCollection, ReportsWhatIsMissingAndWhatIsDouble) {
  Items items;
  add(items, 10, u"Key");
  items.add({20, {}});
  EXPECT_EQ(raised_number([&] { add(items, 30, u"kEY"); }), 457);
  EXPECT_EQ(items.size(), 2u);
  EXPECT_EQ(items.at(2), 20);
  EXPECT_EQ(items.at(u"KEY"), 10);
  for (const std::int64_t position : {INT64_MIN, std::int64_t{0}, std::int64_t{3}, INT64_MAX}) {
    EXPECT_EQ(raised_number([&] { items.at(position); }), 9);
    EXPECT_FALSE(items.remove(position));
  }
  EXPECT_EQ(raised_number([&] { items.at(u""); }), 5);
  EXPECT_TRUE(items.remove(u"key"));
  add(items, 40, u"KEY");
  Items moved = std::move(items);
  EXPECT_EQ(moved.at(u"key"), 40);
  EXPECT_TRUE(moved.remove(u"key"));
  EXPECT_EQ(moved.at(1), 20);
}

/// The same list, kept in the plainest way.
class PlainList {
 public:
  std::vector<Item> items;

  auto with_key(const String& key) {
    return std::find_if(items.begin(), items.end(), [&](const Item& item) { return item.key == key; });
  }
};

TEST(OrderedCollection, AgreesWithAPlainList) {
  for (unsigned seed = 1; seed <= testing::rounds(testing::scaled(200)); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 dice(seed);
    Items items;
    PlainList plain;
    const auto growth = static_cast<unsigned>(1 + dice() % 6);
    for (int step = 0; step < 400; ++step) {
      const auto position = static_cast<std::int64_t>(dice() % (plain.items.size() + 2));
      const bool there = position >= 1 && position <= static_cast<std::int64_t>(plain.items.size());
      const String key(1, static_cast<char16_t>(u'A' + dice() % 26));
      const auto found = plain.with_key(key);
      const auto action = static_cast<unsigned>(dice() % 8);
      if (action < growth && found == plain.items.end()) {
        add(items, step, key);
        plain.items.push_back({step, key});
      } else if (action < growth) {
        items.add({step, {}});
        plain.items.push_back({step, u""});
      } else if (action == 7) {
        EXPECT_EQ(items.remove(key), found != plain.items.end());
        if (found != plain.items.end()) plain.items.erase(found);
      } else {
        EXPECT_EQ(items.remove(position), there);
        if (there) plain.items.erase(plain.items.begin() + static_cast<std::ptrdiff_t>(position - 1));
      }
      ASSERT_EQ(items.size(), plain.items.size());
      std::int64_t at = 0;
      for (const Item& item : items) ASSERT_EQ(item, plain.items[static_cast<std::size_t>(at++)].value);
      ASSERT_EQ(static_cast<std::size_t>(at), plain.items.size());
      for (at = 1; at <= static_cast<std::int64_t>(plain.items.size()); ++at)
        ASSERT_EQ(items.at(at), plain.items[static_cast<std::size_t>(at - 1)].value);
      for (const auto& [value, item_key] : plain.items) ASSERT_TRUE(item_key.empty() || items.at(item_key) == value);
    }
  }
}

TEST(OrderedCollection, WalksMeetEachRemainingItemOnce) {
  for (unsigned seed = 1; seed <= testing::rounds(testing::scaled(500)); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 dice(seed);
    OrderedCollection<int> items;
    int next = 0;
    while (next < 30) items.add(next++);
    std::vector<bool> removed(200), met(200);
    int last = -1;
    for (const int item : items) {
      ASSERT_GT(item, last);
      ASSERT_FALSE(removed[static_cast<std::size_t>(item)]);
      met[static_cast<std::size_t>(item)] = true;
      last = item;
      for (auto change = dice() % 4; change > 0; --change) {
        if (dice() % 4 == 0 && next < 200) {
          items.add(next++);
        } else if (!items.empty()) {
          const auto position = static_cast<std::int64_t>(1 + dice() % items.size());
          removed[static_cast<std::size_t>(items.at(position))] = true;
          items.remove(position);
        }
      }
    }
    for (const int item : items) ASSERT_TRUE(met[static_cast<std::size_t>(item)]);
  }
}

// Each of these would take minutes if it took a step for every item, or for every removed one.
TEST(OrderedCollection, StaysQuickWhenLargeAndFullOfGaps) {
  Items items;
  constexpr int many = testing::scaled(200000);
  for (int i = 0; i < many; ++i) add(items, i, widen(std::to_string(i)));
  for (int i = 0; i < many / 3; ++i) {
    EXPECT_EQ(*items.begin(), 2 * i);
    items.remove(1);
    items.remove(widen(std::to_string(2 * i + 1)));
  }
  EXPECT_EQ(items.at(1), 2 * (many / 3));
  while (!items.empty()) items.remove(static_cast<std::int64_t>((items.size() + 1) / 2));
}

}  // namespace
}  // namespace tornby
