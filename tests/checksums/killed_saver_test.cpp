// A process that is killed while it saves never costs the file.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "checksums/clsApi.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

bool wait_for_size(const fs::path& file, std::uintmax_t size) {
  for (const auto end = std::chrono::steady_clock::now() + 20s; std::chrono::steady_clock::now() < end;) {
    std::error_code ignored;
    if (fs::file_size(file, ignored) == size) return true;
    std::this_thread::sleep_for(1ms);
  }
  return false;
}

/// Without empty ones: Wine marks a new file in a second step, and what a process leaves that is killed before that
/// nobody removes.
std::ptrdiff_t files_in(const fs::path& folder) {
  return std::ranges::count_if(fs::directory_iterator(folder), [](const auto& file) { return file.file_size() != 0; });
}

TEST(KilledSaver, LeavesTheFileWholeHundredsOfTimes) {
  constexpr unsigned kills = 200;
  const testing::TemporaryFolder folder;
  const fs::path program = testing::program_beside("saver");
  const fs::path file = folder.path() / "text.txt";
  std::mt19937 random{std::random_device{}()};
  unsigned killed_in_mid_save = 0;
  for (unsigned i = 0; i < kills; ++i) {
    const char letter = static_cast<char>('a' + i % 26);
    const std::size_t length = 50'000 + i;
    testing::ChildProcess saver(program, {file.string(), std::string(1, letter), std::to_string(length)});
    ASSERT_TRUE(wait_for_size(file, length + 2)) << "this process has saved, and goes on saving";
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
    saver.kill();
    ASSERT_EQ(folder.read("text.txt"), std::string(length, letter) + "\r\n") << "kill " << i;
    const auto files = files_in(folder.path());
    ASSERT_LE(files, 2) << "what one process leaves, the next removes";
    killed_in_mid_save += files == 2;
  }
  EXPECT_GT(killed_in_mid_save, kills / 10);
  RecordProperty("killed_in_mid_save", static_cast<int>(killed_in_mid_save));

  EXPECT_TRUE(clsApi().apiSaveFile(file.u16string(), u"the end"));
  EXPECT_EQ(folder.read("text.txt"), "the end\r\n");
  EXPECT_EQ(files_in(folder.path()), 1);
}

}  // namespace
}  // namespace tornby
