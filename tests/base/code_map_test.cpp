// One suite for every kernel that shifts text between units and codes, and the code pages above it.
#include "base/code_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "base/single_byte_code_page.h"
#include "support/guarded_buffer.h"
#include "support/kernels.h"

namespace tornby {
namespace {

/// Converts `in` with a stranger at each place, and without one. The kernel may stop less than a stride before it.
template <class In, class Out>
void check(auto convert, std::vector<In> in, In stranger, bool is_stranger, auto by_table) {
  testing::GuardedBuffer in_room(in.size() * sizeof(In)), out_room(in.size() * sizeof(Out));
  for (std::size_t place = 0; place <= in.size(); ++place) {
    auto numbers = in;
    if (place < in.size()) numbers[place] = stranger;
    const auto from = reinterpret_cast<In*>(in_room.at_end(in.size() * sizeof(In)).data());
    const auto to = reinterpret_cast<Out*>(out_room.at_end(in.size() * sizeof(Out)).data());
    std::copy(numbers.begin(), numbers.end(), from);
    const std::size_t done = convert(from, in.size(), to);
    ASSERT_TRUE(done == in.size() || (is_stranger && done <= place && place - done < code_stride))
        << done << " of " << place;
    for (std::size_t i = 0; i < done; ++i) ASSERT_EQ(to[i], by_table(numbers[i])) << i;
  }
}

TEST(CodeMapKernel, ConvertsUpToWhatItDoesNotKnowAndStaysInside) {
  std::mt19937 random{20261123};
  for (const CodeRun& run : {CodeRun{}, CodeRun{0x410, 0xC0, 0x3F}, CodeRun{0x80, 0x80, 0x80}}) {
    Characters characters{};  // those of the run, and the signs from U+2080 on
    UnitCodes codes(0x10000, '?');
    for (unsigned code = 0; code < characters.size(); ++code) {
      const bool in_run = code >= run.code && code < run.code + run.length;
      characters[code] = static_cast<char16_t>(code < 0x80 ? code
                                               : in_run    ? code - run.code + run.first
                                                           : 0x2000 + code);
      codes[characters[code]] = static_cast<std::uint8_t>(code);
    }
    const CodeMap map(characters, codes, run);
    const CharacterMap back(characters, run);
    const bool runs = run.length != 0;
    for (std::size_t size = 0; size < 200; size += 1 + size / 10) {
      std::vector<char16_t> units(size);
      std::vector<std::uint8_t> numbers(size);
      for (std::size_t i = 0; i < size; ++i) {
        const auto of_run = static_cast<std::uint8_t>(run.code + random() % std::max<unsigned>(run.length, 1));
        numbers[i] = runs && size % 3 != 0 ? of_run : static_cast<std::uint8_t>(random() % 0x80);
        units[i] = characters[numbers[i]];
      }
      testing::with_each(code_map_kernels(), [&](const CodeMapKernel& kernel) {
        for (const char16_t stranger : {u'\x80', u'\x40F', u'\x44F', u'\x20CD', u'\xFFC1'})
          check<char16_t, std::uint8_t>(
              [&](auto... arguments) { return kernel.narrow(arguments..., runs ? &map : nullptr); }, units, stranger,
              stranger < run.first || stranger >= run.first + run.length, [&](char16_t unit) { return codes[unit]; });
        String widened(size, u'\0');
        kernel.widen_bytes(numbers.data(), size, widened.data());
        ASSERT_EQ(widened, String(numbers.begin(), numbers.end()));
        for (const std::uint8_t stranger : Bytes{0x80, 0xBF, 0xFF})
          check<std::uint8_t, char16_t>([&](auto... arguments) { return kernel.widen(arguments..., back); }, numbers,
                                        stranger, stranger < run.code || stranger >= run.code + run.length,
                                        [&](std::uint8_t code) { return characters[code]; });
      });
    }
  }
}

/// Every code of its own, some of them twice, ASCII included, so that nothing goes by runs.
SingleByteCodePage mixed_page() {
  Characters characters{};
  for (unsigned code = 0; code < characters.size(); ++code) characters[code] = static_cast<char16_t>(code * 77 % 0x1FF);
  return SingleByteCodePage(1, characters);
}

SingleByteCodePage cyrillic_page() {
  Characters characters{};
  for (unsigned code = 0; code < characters.size(); ++code)
    characters[code] = static_cast<char16_t>(code < 0x80 ? code : code < 0xC0 ? code + 0x390 : code - 0xC0 + 0x410);
  characters[0xA8] = 0x401;
  characters[0x98] = 0x98;
  return SingleByteCodePage(1251, characters);
}

TEST(SingleByteCodePage, AgreesWithTheTablesCharacterByCharacter) {
  std::mt19937 random{20261124};
  const SingleByteCodePage mixed = mixed_page(), russian = cyrillic_page();
  for (const SingleByteCodePage* page : {&windows_1252(), &mixed, &russian}) {
    Bytes all(256);
    for (unsigned code = 0; code < all.size(); ++code) all[code] = static_cast<std::uint8_t>(code);
    const String characters = page->decode(all);
    for (std::size_t round = 0; round < 3000; ++round) {
      String text(random() % 400, u'\0');
      for (char16_t& unit : text) {
        const auto kind = random() % 300;
        unit = kind > round / 100 ? characters[random() % (round % 3 != 0 ? 0x80 : 0x100)]
               : kind % 2 == 0    ? static_cast<char16_t>(random())
                                  : static_cast<char16_t>(random() % 0x500);
      }
      Bytes codes(text.size());
      std::transform(text.begin(), text.end(), codes.begin(),
                     [page](char16_t unit) { return static_cast<std::uint8_t>(page->code_of(unit)); });
      ASSERT_EQ(page->encode(text), codes);
      String back(text.size(), u'\0');
      std::transform(codes.begin(), codes.end(), back.begin(), [&](std::uint8_t code) { return characters[code]; });
      ASSERT_EQ(page->decode(codes), back);
      Bytes each(text.size()), slowly(text.size());
      page->encode_each(text, each.data());
      page->AnsiCodePage::encode_each(text, slowly.data());
      ASSERT_EQ(each, slowly);
    }
  }
}

}  // namespace
}  // namespace tornby
