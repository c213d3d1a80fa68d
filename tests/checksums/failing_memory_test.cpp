// Whatever allocation fails, the files and the results are right.
#include <gtest/gtest.h>

#include <filesystem>

#include "base/single_byte_code_page.h"
#include "checksums/clsApi.h"
#include "checksums/clsCRC.h"
#include "checksums/clsEncryptXOR.h"
#include "checksums/clsWebEncryption.h"
#include "support/failing_allocations.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::AllocationFailure;
using testing::fail_each_allocation;

TEST(FailingMemory, SavesAllOrNothing) {
  const clsApi api(windows_1252());
  const String text(20'000, u'n');
  EXPECT_GT(fail_each_allocation([&](AllocationFailure& failure) {
              const testing::TemporaryFolder folder;
              const String name = folder.write("text.txt", "earlier");
              const bool saved = failure.during([&] { return api.apiSaveFile(name, text); });
              EXPECT_TRUE(saved || failure.happened());
              EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "nothing is left";
              EXPECT_EQ(folder.read("text.txt"), saved ? std::string(20'000, 'n') + "\r\n" : "earlier");
            }),
            0u);
}

TEST(FailingMemory, ReadsAllOrNothing) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("text.txt", std::string(100'000, 'x'));
  const clsApi api(windows_1252());
  EXPECT_GT(fail_each_allocation([&](AllocationFailure& failure) {
              const String text = failure.during([&] { return api.ApiReadFile(name); });
              EXPECT_EQ(text.size(), text.empty() && failure.happened() ? 0u : 100'000u);
            }),
            0u);
}

TEST(FailingMemory, NoChecksumIsWrong) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("digits.txt", "123456789");
  const clsCRC crc;
  EXPECT_GT(fail_each_allocation([&](AllocationFailure& failure) {
              const Variant value = failure.during([&] { return crc.CalculateFile(name); });
              const bool failed = value == Variant(std::int16_t{-1});
              EXPECT_TRUE(failed ? failure.happened() : is_empty(value) || value == Variant(-873187034));
            }),
            0u);
}

TEST(FailingMemory, NoTextFormIsWrong) {
  static const String text(10'000, u'n');
  static const String hex = clsEncryptXOR().HexEncrypt(text);
  static const String base64 = clsWebEncryption(windows_1252()).bsEncodeString(text);
  using Ask = String (*)();
  for (const Ask ask : {
           Ask([] { return clsEncryptXOR().Encrypt(text); }),
           Ask([] { return clsEncryptXOR().HexEncrypt(text); }),
           Ask([] { return clsEncryptXOR().HexDecrypt(hex); }),
           Ask([] { return clsWebEncryption(windows_1252()).bsEncodeString(text); }),
           Ask([] { return clsWebEncryption(windows_1252()).bsDecodeString(base64); }),
       })
    testing::expect_no_wrong_answer(ask);
  testing::expect_no_wrong_answer([] { return clsCRC(windows_1252()).AddString(text); });
  testing::expect_no_wrong_answer([] { return clsCRC(windows_1252()).CalculateString(text); });
}

TEST(FailingMemory, LeavesTheCallersTextAlone) {
  const clsWebEncryption web(windows_1252());
  const String key(100, u'k');
  String cipher(1'000, u'n');
  const String sent = web.Encrypt(cipher, key);
  for (const bool there : {true, false})
    fail_each_allocation([&](AllocationFailure& failure) {
      const String before = there ? String(1'000, u'n') : sent;
      String text = before;
      try {
        failure.during([&] { return there ? web.Encrypt(text, key) : web.Decrypt(text, key); });
        EXPECT_EQ(text, there ? cipher : String(1'000, u'n'));
      } catch (const std::bad_alloc&) {
        EXPECT_EQ(text, before);
      }
    });
}

}  // namespace
}  // namespace tornby
