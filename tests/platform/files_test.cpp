#include "platform/files.h"

#include <gtest/gtest.h>

#include <array>

#include "support/errors.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::raised_number;

TEST(Files, ReadsToTheEndAndNoFurther) {
  const testing::TemporaryFolder folder;
  const String name = folder.write("binary.dat", std::string_view("a\r\n\0\x1a\xff", 6));  // no byte is special
  EXPECT_EQ(native_files().size(name), 6u);
  const auto file = native_files().open_for_reading(name);
  EXPECT_EQ(file->size(), 6u);
  std::array<std::uint8_t, 16> buffer{};
  EXPECT_EQ(file->read(buffer), 6u);
  EXPECT_EQ(buffer[5], 0xFF);
  EXPECT_EQ(file->read(buffer), 0u);
}

TEST(Files, TellsFailuresApart) {
  const testing::TemporaryFolder folder;
  const Files& files = native_files();
  const struct {
    String name;
    std::int32_t number;
  } cases[] = {
      {folder.name_of("none.txt"), 53},
      {u"", 52},
      {String(u"a\0b", 3), 52},
      {folder.path().u16string(), 75},
  };
  for (const auto& item : cases) EXPECT_EQ(raised_number([&] { files.size(item.name); }), item.number);
  EXPECT_EQ(raised_number([&] { files.open_for_reading(folder.name_of("none.txt")); }), 53);
}

}  // namespace
}  // namespace tornby
