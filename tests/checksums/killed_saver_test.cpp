// A process that is killed while it saves never costs the file, and several may use one file at once.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "checksums/clsApi.h"
#include "support/child_process.h"
#include "support/scale.h"
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
  const unsigned kills = testing::rounds(200);
  const testing::TemporaryFolder folder;
  const fs::path program = testing::program_beside("saver");
  const fs::path file = folder.path() / "text.txt";
  std::mt19937 random{std::random_device{}()};
  unsigned killed_in_mid_save = 0;
  for (unsigned i = 0; i < kills; ++i) {
    const char letter = static_cast<char>('a' + i % 26);
    const std::size_t length = 50'000 + i;
    testing::ChildProcess saver(program, {"replaced", file.string(), std::string(1, letter), std::to_string(length)});
    ASSERT_TRUE(wait_for_size(file, length + 2)) << "this process has saved, and goes on saving";
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
    saver.kill();
    ASSERT_EQ(folder.read("text.txt"), std::string(length, letter) + "\r\n") << "kill " << i;
    const auto files = files_in(folder.path());
    ASSERT_LE(files, 2) << "what one process leaves, the next removes";
    killed_in_mid_save += files == 2;
  }
  EXPECT_GT(killed_in_mid_save, 8u) << "or the kills prove little";
  RecordProperty("killed_in_mid_save", static_cast<int>(killed_in_mid_save));

  EXPECT_TRUE(clsApi().apiSaveFile(file.u16string(), u"the end"));
  EXPECT_EQ(folder.read("text.txt"), "the end\r\n");
  EXPECT_EQ(files_in(folder.path()), 1);
}

bool is_whole(const std::string& text) {
  return text.size() > 2 && text.ends_with("\r\n") && text.find_first_not_of(text[0]) == text.size() - 2;
}

TEST(KilledSaver, LeavesTheNewTextBesideAFileThatItWritesOver) {
  const testing::TemporaryFolder folder;
  const fs::path program = testing::program_beside("saver");
  const fs::path file = folder.path() / "text.txt";
  std::mt19937 random{std::random_device{}()};
  for (unsigned i = 0; i < 25; ++i) {
    const std::size_t length = 500'000 + i;
    testing::ChildProcess saver(
        program, {"refused", file.string(), std::string(1, static_cast<char>('a' + i % 26)), std::to_string(length)});
    ASSERT_TRUE(wait_for_size(file, length + 2));
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 5000));
    saver.kill();
    bool found = false;
    for (const auto& left : fs::directory_iterator(folder.path()))
      found = found || is_whole(folder.read(left.path().filename().string()));
    ASSERT_TRUE(found) << "kill " << i;
  }
  EXPECT_TRUE(clsApi().apiSaveFile(file.u16string(), u"the end"));
  EXPECT_EQ(files_in(folder.path()), 1);
}

TEST(SeveralProcesses, SaveAndReadOneFileAtOnce) {
  for (const char* way : {"replaced", "refused"}) {
    const testing::TemporaryFolder folder;
    const fs::path file = folder.path() / "text.txt";
    const String name = file.u16string();
    const String own(60'000, u'x');
    ASSERT_TRUE(clsApi().apiSaveFile(name, own));
    testing::ChildProcess other(testing::program_beside("saver"), {way, file.string(), "y", "90000"});
    ASSERT_TRUE(wait_for_size(file, 90'002));
    unsigned saves = 0, saved = 0;
    std::jthread saver([&](const std::stop_token& end) {
      for (; !end.stop_requested(); ++saves) saved += clsApi().apiSaveFile(name, own);
    });
    unsigned seen[2] = {0, 0};
    // A busy machine may show one text only, and for long.
    const auto start = std::chrono::steady_clock::now();
    const auto most = [&] { return seen[0] == 0 || seen[1] == 0 ? 60s : std::chrono::seconds(testing::rounds(1)); };
    while (std::chrono::steady_clock::now() < start + most()) {
      const String text = clsApi().ApiReadFile(name);
      ASSERT_EQ(text.size(), text.starts_with(u'x') ? own.size() + 2 : 90'002u) << way;
      ASSERT_EQ(text.find_first_not_of(text[0]), text.size() - 2) << way;
      ++seen[text[0] == u'y'];
    }
    saver.request_stop();
    saver.join();
    EXPECT_EQ(saved, saves) << way;
    EXPECT_GT(seen[0], 0u);
    EXPECT_GT(seen[1], 0u);
  }
}

}  // namespace
}  // namespace tornby
