// What the form keeps, and what it says of a file.
#include <gtest/gtest.h>

#include <string>

#include "samples/form/file_report.h"
#include "samples/form/form_state.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::TemporaryFolder;

bool equal(const FormState& left, const FormState& right) {
  return left.path == right.path && left.checksum == right.checksum && left.alignment == right.alignment &&
         left.vertical == right.vertical && left.frame == right.frame && left.width == right.width &&
         left.height == right.height;
}

FormState state_of(StringView path) {
  FormState state;
  state.path = path;
  state.checksum = u"CBF43926";
  state.alignment = 1;
  state.vertical = 2;
  state.frame = 0;
  state.width = 641;
  state.height = 300;
  return state;
}

TEST(FormState, ComesBackWhateverThePath) {
  const TemporaryFolder folder;
  const String file = folder.write("settings.txt", "<NOTES>\r\nkept\r\n</NOTES>\r\n");
  for (const StringView path : {u"C:\\plans\\house.txt", u"", u"PATH", u"C:\\FORM STATE\\Ren\u00E9e & co.txt", u"1"}) {
    const FormState state = state_of(path);
    save_state(file, state);
    EXPECT_TRUE(equal(load_state(file), state)) << folder.read("settings.txt");
  }
  EXPECT_TRUE(folder.read("settings.txt").starts_with("<NOTES>\r\nkept\r\n</NOTES>\r\n"));
}

TEST(FormState, SurvivesDamagedFiles) {
  const TemporaryFolder folder;
  EXPECT_TRUE(equal(load_state(folder.name_of("missing")), FormState()));
  EXPECT_TRUE(equal(load_state(folder.path().u16string()), FormState()));
  save_state(folder.path().u16string(), FormState());  // no file can be there

  std::string number = "<FORM STATE>\r\n";
  for (const char* line : {"<ALIGNMENT>3</ALIGNMENT>", "<VERTICAL>-1</VERTICAL>", "<FRAME>lines</FRAME>",
                           "<WIDTH>1</WIDTH>", "<HEIGHT>99999999999</HEIGHT>", "</FORM STATE>"}) {
    number.append(line).append("\r\n");
  }
  for (const std::string& damaged :
       {number, std::string("kept\r\n<FORM STATE>\r\n<PATH>C:\\x"), std::string("<FORM STATE>\r\n<PATH>C:\\x</PATH>"),
        std::string("<FORM STATE></FORM STATE>"), std::string(3000, '<'), std::string(100, '\0')}) {
    const String file = folder.write("settings.txt", damaged);
    EXPECT_TRUE(equal(load_state(file), FormState())) << damaged;
    const FormState state = state_of(u"C:\\a.txt");
    save_state(file, state);
    EXPECT_TRUE(equal(load_state(file), state)) << folder.read("settings.txt");
  }
}

TEST(FileReport, TellsTheChecksumAndWhetherItHasChanged) {
  const TemporaryFolder folder;
  const String file = folder.write("a&b.txt", "123456789");
  const FileReport first = report_on(file, u"");
  EXPECT_EQ(first.checksum, u"CBF43926");
  EXPECT_EQ(first.link, u"CRC-32: CBF43926");
  EXPECT_TRUE(first.label.ends_with(u"a&&b.txt"));
  EXPECT_TRUE(report_on(file, u"CBF43926").label.ends_with(u"a&&b.txt is unchanged"));
  EXPECT_TRUE(report_on(file, u"00000000").label.ends_with(u"has changed: it was 00000000"));
}

TEST(FileReport, HasNoChecksumWithoutContent) {
  const TemporaryFolder folder;
  const String empty = folder.write("empty.txt", "");
  for (const auto& [path, link] : {std::pair<String, StringView>(u"", u"No file chosen"),
                                   {empty, u"This file is empty"},
                                   {folder.name_of("missing"), u"This file cannot be read"},
                                   {folder.path().u16string(), u"This file cannot be read"}}) {
    const FileReport report = report_on(path, u"CBF43926");
    EXPECT_EQ(report.checksum, u"");
    EXPECT_EQ(report.link, link);
    EXPECT_EQ(report.label.find(u"changed"), String::npos);
  }
}

}  // namespace
}  // namespace tornby
