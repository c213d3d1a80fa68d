#include "checksums/clsApi.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <new>
#include <vector>

#include "base/runtime_error.h"
#include "base/single_byte_code_page.h"
#include "support/handles.h"
#include "support/scripted_file.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

namespace fs = std::filesystem;
using testing::ForwardingFiles;
using testing::TemporaryFolder;

class CountingPointer final : public MousePointer {
 public:
  void show_hourglass() const override { ++shown; }
  void show_default() const override { ++put_back; }
  mutable int shown = 0;
  mutable int put_back = 0;
};

clsApi api_on(const Files& files) {
  return clsApi(windows_1252(), files);
}
const clsApi& api() {
  static const clsApi object = api_on(native_files());
  return object;
}

std::size_t files_in(const TemporaryFolder& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
}

TEST(clsApi, ReadsBytesAsCharacters) {
  const TemporaryFolder folder;
  EXPECT_EQ(api().ApiReadFile(folder.write("ab.txt", "AB")), u"AB");
  EXPECT_EQ(api().ApiReadFile(folder.write("none.txt", "")), u"");
  EXPECT_EQ(api().ApiReadFile(folder.write("all.txt", std::string_view("\x80\xE9\r\n\0\x1A\x81", 7))),
            String(u"\u20AC\u00E9\r\n\0\x1A\u0081", 7));

  std::string large;
  for (int line = 0; line < 200'000; ++line) large += "line " + std::to_string(line) + "\n";
  EXPECT_EQ(api().ApiReadFile(folder.write("large.txt", large)), widen(large));
}

TEST(clsApi, ReadingNothingIsEmpty) {
  const TemporaryFolder folder;
  EXPECT_EQ(api().ApiReadFile(folder.name_of("missing.txt")), u"");
  EXPECT_EQ(api().ApiReadFile(folder.path().u16string()), u"");
  EXPECT_EQ(api().ApiReadFile(u""), u"");
}

TEST(clsApi, SavesOneLine) {
  const TemporaryFolder folder;
  const String name = folder.name_of("text.txt");
  EXPECT_TRUE(api().apiSaveFile(name, u"A"));
  EXPECT_EQ(folder.read("text.txt"), "A\r\n");
  EXPECT_TRUE(api().apiSaveFile(name, u"\u20AC\u00E9\u0416"));
  EXPECT_EQ(folder.read("text.txt"), "\x80\xE9?\r\n");
  EXPECT_TRUE(api().apiSaveFile(name, u""));
  EXPECT_EQ(folder.read("text.txt"), "\r\n");
  const String text = api().ApiReadFile(name);
  EXPECT_EQ(text, u"\r\n");
  EXPECT_EQ(files_in(folder), 1u);
}

TEST(clsApi, SavingNowhereIsFalse) {
  const TemporaryFolder folder;
  const CountingPointer pointer;
  const clsApi object(windows_1252(), native_files(), pointer);
  EXPECT_FALSE(object.apiSaveFile(folder.name_of("missing/text.txt"), u"A"));
  EXPECT_FALSE(object.apiSaveFile(folder.path().u16string(), u"A"));
  EXPECT_FALSE(object.apiSaveFile(u"", u"A"));
  EXPECT_TRUE(object.apiSaveFile(folder.name_of("text.txt"), u"A"));
  EXPECT_EQ(pointer.shown, 4);
  EXPECT_EQ(pointer.put_back, 4);
}

TEST(clsApi, FileThatChangesOrFailsWhileItIsRead) {
  const auto read = [](std::uint64_t size, std::vector<std::size_t> reads) {
    const testing::ScriptedFile file(size, std::move(reads));
    const String text = api_on(file).ApiReadFile(u"x");
    EXPECT_EQ(file.left_open, 0);
    return text;
  };
  EXPECT_EQ(read(4, {1000}), u"aaaa") << "it grew";
  EXPECT_EQ(read(1000, {3, 0}), u"aaa") << "it shrank";
  EXPECT_EQ(read(1000, {0}), u"");
  EXPECT_EQ(read(1000, {500}), u"") << "it failed half-way";
  EXPECT_EQ(read(std::uint64_t{1} << 31, {1000}), u"");
  EXPECT_EQ(read(~std::uint64_t{0}, {1000}), u"");
}

/// Fails at one step of saving, after having done half of a write.
class FailingFiles final : public ForwardingFiles {
 public:
  enum Step { replace_step, write_step, commit_step, overwrite_step, resize_step, flush_step, nothing };
  enum Way { replaced, refused, nothing_beside };

  FailingFiles(Step step, Way way) : step_(step), way_(way) {}

  std::unique_ptr<Replacement> replace(StringView name) const override {
    fail_at(replace_step);
    if (way_ == nothing_beside) return nullptr;
    return std::make_unique<Beside>(*this, native_files().replace(name));
  }
  std::unique_ptr<OutputFile> open_for_writing(StringView name) const override {
    return std::make_unique<Output>(*this, native_files().open_for_writing(name));
  }

 private:
  void fail_at(Step step) const {
    if (step == step_) throw RuntimeError(StandardError::disk_full);
  }

  class Beside final : public Replacement {
   public:
    Beside(const FailingFiles& files, std::unique_ptr<Replacement> real) : files_(files), real_(std::move(real)) {}
    void write(ByteView bytes) override {
      if (files_.step_ == write_step) real_->write(bytes.first(bytes.size() / 2));
      files_.fail_at(write_step);
      real_->write(bytes);
    }
    bool commit() override {
      files_.fail_at(commit_step);
      return files_.way_ == replaced && real_->commit();
    }
    std::size_t read(std::uint64_t position, std::span<std::uint8_t> out) override {
      return real_->read(position, out);
    }
    void keep() override { real_->keep(); }
    void done() override { real_->done(); }

   private:
    const FailingFiles& files_;
    std::unique_ptr<Replacement> real_;
  };

  class Output final : public OutputFile {
   public:
    Output(const FailingFiles& files, std::unique_ptr<OutputFile> real) : files_(files), real_(std::move(real)) {}
    std::uint64_t size() const override { return real_->size(); }
    void write(std::uint64_t position, ByteView bytes) override {
      if (files_.step_ == overwrite_step) real_->write(position, bytes.first(bytes.size() / 2));
      files_.fail_at(overwrite_step);
      real_->write(position, bytes);
    }
    void resize(std::uint64_t size) override {
      files_.fail_at(resize_step);
      real_->resize(size);
    }
    void flush() override {
      files_.fail_at(flush_step);
      real_->flush();
    }

   private:
    const FailingFiles& files_;
    std::unique_ptr<OutputFile> real_;
  };

  Step step_;
  Way way_;
};

TEST(clsApi, FailureAtAnyStepLeavesTheEarlierFileWhole) {
  using enum FailingFiles::Step;
  using enum FailingFiles::Way;
  const struct {
    FailingFiles::Step step;
    FailingFiles::Way way;
  } cases[] = {{replace_step, replaced},
               {write_step, replaced},
               {commit_step, replaced},
               {overwrite_step, refused},
               {overwrite_step, nothing_beside}};
  for (const auto& [step, way] : cases) {
    const TemporaryFolder folder;
    const String name = folder.write("text.txt", "earlier");
    EXPECT_FALSE(api_on(FailingFiles(step, way)).apiSaveFile(name, u"a text that is longer than the earlier one"));
    EXPECT_EQ(folder.read("text.txt"), "earlier") << step << way;
    EXPECT_EQ(files_in(folder), 1u) << step << way;
  }
}

TEST(clsApi, WritesInPlaceWhereTheReplacementIsRefused) {
  using enum FailingFiles::Step;
  using enum FailingFiles::Way;
  for (const auto way : {refused, nothing_beside}) {
    const TemporaryFolder folder;
    const String name = folder.write("text.txt", "earlier");
    const String longest(50'000, u'l');
    for (const StringView text :
         {StringView(u"a text that is longer"), StringView(u"short"), StringView(longest), StringView(u"")}) {
      EXPECT_TRUE(api_on(FailingFiles(nothing, way)).apiSaveFile(name, text));
      EXPECT_EQ(api().ApiReadFile(name), String(text) + u"\r\n");
      EXPECT_EQ(files_in(folder), 1u);
    }
    for (const auto step : {overwrite_step, resize_step, flush_step}) {
      EXPECT_FALSE(api_on(FailingFiles(step, way)).apiSaveFile(name, u""));
      EXPECT_EQ(folder.read("text.txt.saving~"), way == refused ? "\r\n" : "") << "the new text stays beside";
      EXPECT_TRUE(api().apiSaveFile(name, u"text"));
      EXPECT_EQ(files_in(folder), 1u);
    }
  }
}

TEST(clsApi, LeavesNoHandleOpen) {
  const TemporaryFolder folder;
  const String name = folder.name_of("text.txt");
  const FailingFiles failing(FailingFiles::Step::commit_step, FailingFiles::Way::replaced);
  const auto round = [&] {
    api().apiSaveFile(name, u"A");
    api().ApiReadFile(name);
    api_on(failing).apiSaveFile(name, u"B");
    api().apiSaveFile(folder.path().u16string(), u"C");
  };
  round();
  const auto before = testing::next_handle();
  for (int i = 0; i < 20; ++i) round();
  EXPECT_EQ(testing::next_handle(), before);
}

}  // namespace
}  // namespace tornby
