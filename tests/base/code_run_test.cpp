// One suite for every kernel that shifts text between units and codes, and the code pages above it.
#include "base/code_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "base/single_byte_code_page.h"
#include "support/guarded_buffer.h"
#include "support/kernels.h"

namespace tornby {
namespace {

/// Whether numbers, units or codes, are ASCII or of the run that starts with `start`.
auto stranger_to(unsigned start, unsigned length) {
  return [=](unsigned number) { return number >= 0x80 && (number < start || number >= start + length); };
}

/// Converts `in` with a stranger at each place, and without one. The kernel must stop less than a stride before it.
template <class In, class Out, class Convert>
void check(Convert convert, std::vector<In> in, In stranger, auto is_stranger, int distance) {
  testing::GuardedBuffer in_room(in.size() * sizeof(In)), out_room(in.size() * sizeof(Out));
  for (std::size_t place = 0; place <= in.size(); ++place) {
    auto numbers = in;
    if (place < in.size()) numbers[place] = stranger;
    if (place < in.size() && !is_stranger(stranger)) continue;
    const auto from = reinterpret_cast<In*>(in_room.at_end(in.size() * sizeof(In)).data());
    const auto to = reinterpret_cast<Out*>(out_room.at_end(in.size() * sizeof(Out)).data());
    std::copy(numbers.begin(), numbers.end(), from);
    const std::size_t done = convert(from, in.size(), to);
    if (place == in.size()) {
      ASSERT_EQ(done, place);
    }
    ASSERT_TRUE(done <= place && (done == place || place - done < code_run_stride)) << done << " of " << place;
    for (std::size_t i = 0; i < done; ++i)
      ASSERT_EQ(to[i], static_cast<Out>(numbers[i] < 0x80 ? numbers[i] : numbers[i] + distance)) << i;
  }
}

TEST(CodeRunKernel, ShiftsUpToWhatIsNeitherAsciiNorOfTheRunAndStaysInside) {
  std::mt19937 random{20261123};
  for (const CodeRun& run : {CodeRun{}, CodeRun{0x410, 0xC0, 0x3F}, CodeRun{0x80, 0x80, 0x80}})
    for (std::size_t size = 0; size < 200; size += 1 + size / 20) {
      std::vector<char16_t> units(size);
      std::vector<std::uint8_t> codes(size);
      for (std::size_t i = 0; i < size; ++i) {
        const auto ascii = static_cast<std::uint8_t>(random() % 0x80), place = static_cast<std::uint8_t>(random());
        const bool plain = place >= run.length || size % 3 == 0;
        units[i] = static_cast<char16_t>(plain ? ascii : run.first + place);
        codes[i] = static_cast<std::uint8_t>(plain ? ascii : run.code + place);
      }
      testing::with_each(code_run_kernels(), [&](const CodeRunKernel& kernel) {
        for (const char16_t stranger : {u'\x80', u'\x40F', u'\x44F', u'\xFFC1'})
          check<char16_t, std::uint8_t>([&](auto... arguments) { return kernel.narrow(arguments..., run); }, units,
                                        stranger, stranger_to(run.first, run.length), run.code - run.first);
        String widened(size, u'\0');
        kernel.widen_bytes(codes.data(), size, widened.data());
        ASSERT_EQ(widened, String(codes.begin(), codes.end()));
        for (const std::uint8_t stranger : Bytes{0x80, 0xBF, 0xFF})
          check<std::uint8_t, char16_t>([&](auto... arguments) { return kernel.widen(arguments..., run); }, codes,
                                        stranger, stranger_to(run.code, run.length), run.first - run.code);
      });
    }
}

/// Every code of its own, some of them twice, ASCII included, so that nothing goes by runs.
SingleByteCodePage mixed_page() {
  SingleByteCodePage::Characters characters{};
  for (unsigned code = 0; code < characters.size(); ++code) characters[code] = static_cast<char16_t>(code * 77 % 0x1FF);
  return SingleByteCodePage(1, characters);
}

SingleByteCodePage cyrillic_page() {
  SingleByteCodePage::Characters characters{};
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
