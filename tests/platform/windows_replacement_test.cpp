// What only this system can show of saving: attributes, shared files, devices.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <vector>

#include "checksums/clsApi.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;

bool save(const String& name) {
  return clsApi().apiSaveFile(name, u"new");
}

TEST(WindowsReplacement, KeepsTheAttributes) {
  const TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const std::string narrow = (folder.path() / "text.txt").string();
  for (const DWORD attribute : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
    ::SetFileAttributesA(narrow.c_str(), attribute);
    const DWORD before = ::GetFileAttributesA(narrow.c_str());
    ASSERT_TRUE(save(name));
    EXPECT_EQ(folder.read("text.txt"), "new\r\n");
    EXPECT_EQ(::GetFileAttributesA(narrow.c_str()) & attribute, before & attribute);
  }
}

TEST(WindowsReplacement, ReadOnlyFileIsRefused) {
  const TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const std::string narrow = (folder.path() / "text.txt").string();
  ::SetFileAttributesA(narrow.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(save(name));
  EXPECT_EQ(folder.read("text.txt"), "earlier");
  EXPECT_EQ(::GetFileAttributesA((narrow + ".saving~").c_str()), INVALID_FILE_ATTRIBUTES);
  ::SetFileAttributesA(narrow.c_str(), FILE_ATTRIBUTE_NORMAL);
}

class Holder {
 public:
  Holder(const TemporaryFolder& folder, DWORD sharing)
      : file_(::CreateFileW((folder.path() / "text.txt").c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0,
                            nullptr)) {}
  ~Holder() { ::CloseHandle(file_); }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

 private:
  HANDLE file_;
};

TEST(WindowsReplacement, FileThatAnotherProgramHolds) {
  const struct {
    DWORD sharing;
    bool saved;
  } cases[] = {{FILE_SHARE_READ, false},
               {FILE_SHARE_READ | FILE_SHARE_WRITE, true},
               {FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, true}};
  for (const auto& [sharing, saved] : cases) {
    const TemporaryFolder folder;
    const String name = folder.write("text.txt", "earlier");
    {
      const Holder holder(folder, sharing);
      EXPECT_EQ(save(name), saved) << sharing;
    }
    EXPECT_EQ(folder.read("text.txt"), saved ? "new\r\n" : "earlier") << sharing;
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << sharing;
    EXPECT_TRUE(save(name));
  }
}

TEST(WindowsReplacement, ShortNameOfALongOneOutsideTheCodePage) {
  const TemporaryFolder folder;
  const fs::path path = folder.path() / u"\u0416\u0417 folder with blanks" / u"\u0418 text with blanks.txt";
  fs::create_directory(path.parent_path());
  std::ofstream(path) << "earlier";
  std::wstring short_name(MAX_PATH, L'\0');
  short_name.resize(::GetShortPathNameW(path.c_str(), short_name.data(), MAX_PATH));
  const String name(short_name.begin(), short_name.end());
  ASSERT_NE(name.find(u'~'), String::npos);
  for (const StringView text : {u"first", u"second", u"third"}) {
    EXPECT_TRUE(clsApi().apiSaveFile(name, text));
    EXPECT_EQ(clsApi().ApiReadFile(name), String(text) + u"\r\n");
  }
  EXPECT_TRUE(fs::exists(path)) << "it keeps its long name";
  EXPECT_EQ(std::distance(fs::directory_iterator(path.parent_path()), {}), 1);
}

/// The access list of a file, as far as it is a list.
std::vector<std::uint8_t> access_list(const fs::path& path) {
  std::vector<std::uint8_t> descriptor(4096);
  DWORD size = 0;
  EXPECT_TRUE(::GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), 4096, &size));
  BOOL present = FALSE, by_default = FALSE;
  ACL* list = nullptr;
  ::GetSecurityDescriptorDacl(descriptor.data(), &present, &list, &by_default);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(list);
  return list ? std::vector<std::uint8_t>(bytes, bytes + list->AclSize) : std::vector<std::uint8_t>();
}

TEST(WindowsReplacement, NewFileHasTheAccessListFromTheStart) {
  const TemporaryFolder folder;
  const String name = folder.write("text.txt", "earlier");
  const fs::path path = folder.path() / "text.txt";
  const auto usual = access_list(path);
  // For the owner alone.
  std::vector<std::uint8_t> descriptor(4096);
  DWORD size = 0;
  ASSERT_TRUE(::GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, descriptor.data(), 4096, &size));
  PSID owner = nullptr;
  BOOL by_default = FALSE;
  ASSERT_TRUE(::GetSecurityDescriptorOwner(descriptor.data(), &owner, &by_default));
  alignas(ACL) std::array<std::uint8_t, 256> list{};
  ::InitializeAcl(reinterpret_cast<ACL*>(list.data()), list.size(), ACL_REVISION);
  ::AddAccessAllowedAce(reinterpret_cast<ACL*>(list.data()), ACL_REVISION, FILE_ALL_ACCESS, owner);
  SECURITY_DESCRIPTOR only_owner{};
  ::InitializeSecurityDescriptor(&only_owner, SECURITY_DESCRIPTOR_REVISION);
  ::SetSecurityDescriptorDacl(&only_owner, TRUE, reinterpret_cast<ACL*>(list.data()), FALSE);
  ASSERT_TRUE(::SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, &only_owner));

  const auto wanted = access_list(path);
  ASSERT_NE(wanted, usual);
  {
    const auto file = native_files().replace(name);
    EXPECT_EQ(access_list(folder.path() / "text.txt.saving~"), wanted);
    EXPECT_TRUE(file->commit());
  }
  EXPECT_EQ(access_list(path), wanted);
}

TEST(WindowsReplacement, WritesDevicesWithoutReplacingThem) {
  EXPECT_TRUE(save(u"NUL"));
  EXPECT_EQ(clsApi().ApiReadFile(u"NUL"), u"");
}

}  // namespace
}  // namespace tornby
