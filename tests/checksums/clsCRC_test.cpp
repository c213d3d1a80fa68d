#include "checksums/clsCRC.h"

#include <gtest/gtest.h>

#include <random>

#include "base/single_byte_code_page.h"
#include "support/errors.h"
#include "support/handles.h"
#include "support/scripted_file.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::raised_number;

constexpr std::int32_t crc32_of_digits = -873187034;  // 0xCBF43926
constexpr std::int32_t crc16_of_digits = 0x31C3;
constexpr std::int16_t failed = -1;

class FixedProcess final : public Process {
 public:
  explicit FixedProcess(bool wow64) : wow64_(wow64) {}
  bool is_wow64() const override { return wow64_; }

 private:
  bool wow64_;
};
const FixedProcess plain_process(false);
const FixedProcess wow64_process(true);

clsCRC plain_crc() {
  return clsCRC(windows_1252(), native_files(), plain_process);
}

TEST(clsCRC, SelectingAnAlgorithmClearsBothRegisters) {
  clsCRC crc = plain_crc();
  crc.AddString(u"x");
  crc.Algorithm(0);
  EXPECT_EQ(crc.Value(), Variant(0));
  EXPECT_EQ(crc.AddString(u"123456789"), Variant(crc16_of_digits));
  crc.Algorithm(0);
  EXPECT_EQ(crc.Value(), Variant(0));
  crc.AddString(u"x");
  crc.Algorithm(1);
  EXPECT_EQ(crc.Value(), Variant(0));
}

TEST(clsCRC, UnknownAlgorithmSelectsNothing) {
  clsCRC crc = plain_crc();
  crc.Algorithm(7);
  EXPECT_EQ(crc.Algorithm(), 7);
  EXPECT_TRUE(is_empty(crc.Value()));
  EXPECT_TRUE(is_empty(crc.AddString(u"123456789")));
  EXPECT_TRUE(is_empty(crc.AddString(u"")));
  crc.Value(5);
  EXPECT_TRUE(is_empty(crc.Value()));
  EXPECT_EQ(raised_number([&] { crc.Value(u"five"); }), 13);
}

TEST(clsCRC, AddsInPiecesAndContinuesFromAnEarlierResult) {
  for (const std::int32_t algorithm : {0, 1}) {
    clsCRC crc = plain_crc();
    crc.Algorithm(algorithm);
    const Variant whole = crc.AddString(u"123456789");
    crc.Clear();
    const Variant half = crc.AddString(u"1234");
    EXPECT_EQ(crc.AddString(u"56789"), whole);

    clsCRC other = plain_crc();
    other.Algorithm(algorithm);
    const std::int32_t earlier = std::get<std::int32_t>(half);
    other.Value(algorithm == 1 ? ~earlier : earlier);
    EXPECT_EQ(other.AddString(u"56789"), whole);
  }
}

TEST(clsCRC, ValueReadsBackInvertedForCrc32Only) {
  clsCRC crc = plain_crc();
  crc.Value(5);
  EXPECT_EQ(crc.Value(), Variant(-6));
  crc.Value(u"-7");
  EXPECT_EQ(crc.Value(), Variant(6));
  crc.Value(std::int16_t{-1});
  EXPECT_EQ(crc.Value(), Variant(0));
  crc.Algorithm(0);
  crc.Value(0x1234F678);
  EXPECT_EQ(crc.Value(), Variant(0xF678)) << "no sign";
  EXPECT_EQ(raised_number([&] { crc.Value(u"99999999999"); }), 6);
  EXPECT_EQ(crc.Value(), Variant(0xF678));
}

TEST(clsCRC, EmptyTextHasNoFirstElement) {
  clsCRC crc = plain_crc();
  crc.AddString(u"x");
  const Variant before = crc.Value();
  EXPECT_EQ(raised_number([&] { crc.AddString(u""); }), 9);
  EXPECT_EQ(crc.Value(), before);
  EXPECT_EQ(raised_number([&] { crc.CalculateString(u""); }), 9);
  EXPECT_EQ(crc.Value(), Variant(0)) << "the registers were cleared before";
  crc.Algorithm(0);
  EXPECT_EQ(raised_number([&] { crc.AddString(u""); }), 9);
}

TEST(clsCRC, Wow64ProcessGetsTheOtherStringResult) {
  clsCRC crc(windows_1252(), native_files(), wow64_process);
  crc.Algorithm(0);
  const Variant before = crc.AddString(u"kept");
  EXPECT_EQ(crc.CalculateString(u"123456789"), Variant(-771566985));
  EXPECT_EQ(crc.CalculateString(u""), Variant(-1));
  EXPECT_EQ(crc.Value(), before);
}

/// Hiragana take two bytes, all else one, as in a Japanese code page.
class TwoByteCodePage final : public AnsiCodePage {
 public:
  unsigned identifier() const override { return 932; }
  std::size_t bytes_per_unit() const override { return 2; }
  std::size_t encode(StringView text, std::uint8_t* out) const override {
    const std::uint8_t* start = out;
    for (const char16_t character : text) {
      const unsigned code = code_of(character);
      if (code > 0xFF) *out++ = static_cast<std::uint8_t>(code >> 8);
      *out++ = static_cast<std::uint8_t>(code);
    }
    return static_cast<std::size_t>(out - start);
  }
  std::size_t decode(ByteView, char16_t*) const override { return 0; }
  unsigned code_of(char16_t character) const override {
    return character < 0x80 ? character : 0x8200u + character % 256;
  }
};

TEST(clsCRC, CharactersOfTwoBytes) {
  const TwoByteCodePage page;
  clsCRC crc(page, native_files(), plain_process);
  clsCRC bytes = plain_crc();
  String text;
  String as_bytes;  // the same bytes as one 1252 character each
  for (int i = 0; i < 3000; ++i) {
    text += u"a\u3042";
    as_bytes += u"a\u201A\u0042";
  }
  EXPECT_EQ(crc.AddString(text), bytes.AddString(as_bytes));
  EXPECT_EQ(raised_number([&] { crc.WIN64_AddCrc32(text, -1); }), 9);
}

TEST(clsCRC, LongTextIsTakenBlockByBlockWithoutASeam) {
  std::mt19937 random(7);
  String text(100'001, u'\0');
  for (char16_t& unit : text) unit = static_cast<char16_t>(random() % 8 == 0 ? random() : 'a' + random() % 26);
  clsCRC crc = plain_crc();
  EXPECT_EQ(crc.AddString(text), Variant(~crc.WIN64_AddCrc32(text, -1)));
}

TEST(clsCRC, CalculateFile) {
  const testing::TemporaryFolder folder;
  const String digits = folder.write("digits.txt", "123456789");
  const String nothing = folder.write("empty.txt", "");

  clsCRC crc = plain_crc();
  crc.Algorithm(0);
  const Variant before = crc.AddString(u"kept");
  EXPECT_EQ(crc.CalculateFile(digits), Variant(crc32_of_digits)) << "always the CRC-32";
  EXPECT_TRUE(is_empty(crc.CalculateFile(nothing)));
  EXPECT_EQ(crc.CalculateFile(folder.name_of("none.txt")), Variant(failed));
  EXPECT_EQ(crc.CalculateFile(folder.path().u16string()), Variant(failed));
  EXPECT_EQ(crc.CalculateFile(u""), Variant(failed));
  EXPECT_EQ(crc.CalculateFile(digits + String(1, u'\0')), Variant(failed));
  EXPECT_EQ(crc.Value(), before);

  const clsCRC wow64(windows_1252(), native_files(), wow64_process);
  EXPECT_TRUE(is_empty(wow64.CalculateFile(digits)));
  EXPECT_TRUE(is_empty(wow64.CalculateFile(nothing)));
  EXPECT_EQ(wow64.CalculateFile(folder.name_of("none.txt")), Variant(failed));
}

TEST(clsCRC, CalculateFileLeavesNoHandleOpen) {
  const testing::TemporaryFolder folder;
  const String digits = folder.write("digits.txt", "123456789");
  const clsCRC crc = plain_crc();
  crc.CalculateFile(digits);
  const auto before = testing::next_handle();
  for (int round = 0; round < 256; ++round) crc.CalculateFile(digits);
  EXPECT_EQ(testing::next_handle(), before);
}

TEST(clsCRC, FileThatFailsAfterItWasOpenedStaysOpen) {
  const testing::ScriptedFile file(4, {});
  EXPECT_EQ(clsCRC(windows_1252(), file, plain_process).CalculateFile(u"x"), Variant(failed));
  EXPECT_EQ(file.left_open, 1);
  EXPECT_EQ(file.closed, 0);
}

TEST(clsCRC, FileTooLargeForMemoryIsNotEvenOpened) {
  const testing::ScriptedFile file(std::uint64_t{1} << 63, {4});
  EXPECT_EQ(clsCRC(windows_1252(), file, plain_process).CalculateFile(u"x"), Variant(failed));
  EXPECT_EQ(file.left_open + file.closed, 0);
  if (sizeof(void*) > 4) return;  // a wider process can hold the real thing, given time

  const testing::TemporaryFolder folder;
  const String name = folder.write("large.bin", "x");
  std::filesystem::resize_file(folder.path() / "large.bin", std::uint64_t{5} << 30);
  EXPECT_EQ(native_files().size(name), std::uint64_t{5} << 30);
  EXPECT_EQ(plain_crc().CalculateFile(name), Variant(failed));
}

TEST(clsCRC, FileThatShrinksIsSummedAsFarAsItGoes) {
  const testing::ScriptedFile file(1000, {4, 0});
  EXPECT_EQ(clsCRC(windows_1252(), file, plain_process).CalculateFile(u"x"), plain_crc().CalculateString(u"aaaa"));
  EXPECT_EQ(file.closed, 1);
}

}  // namespace
}  // namespace tornby
