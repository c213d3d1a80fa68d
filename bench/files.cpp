// Reading and saving whole text files of 1 KiB to 64 MiB, and their checksum, beside straight-line code
// that makes the same promises with the same system calls, and beside what promises nothing. Names are group/who/size;
// the first of a group is what the others are compared with.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "checksums/clsApi.h"
#include "checksums/clsCRC.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#endif

namespace {

using namespace tornby;

/// Without a window there is no pointer to be changed.
class NoPointer final : public MousePointer {
 public:
  void show_hourglass() const override {}
  void show_default() const override {}
};
const clsApi& api() {
  static const NoPointer pointer;
  static const clsApi object(native_code_page(), native_files(), pointer);
  return object;
}

struct Folder {
  std::filesystem::path path = std::filesystem::temp_directory_path() / "tornby_bench_files";
  Folder() { std::filesystem::create_directory(path); }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};
const std::filesystem::path& file() {
  static const Folder folder;
  static const std::filesystem::path path = folder.path / "text.txt";
  return path;
}

void append(String& text, const std::vector<std::uint8_t>& block, std::size_t size) {
  static std::vector<char16_t> characters(block.size());
  text.append(characters.data(), native_code_page().decode({block.data(), size}, characters.data()));
}

#ifdef _WIN32

HANDLE open(const std::string& name, DWORD access, DWORD sharing, DWORD disposition, DWORD flags,
            SECURITY_ATTRIBUTES* security = nullptr) {
  return ::CreateFileA(name.c_str(), access, sharing, security, disposition, flags, nullptr);
}

String plain_read() {
  const HANDLE in = open(file().string(), GENERIC_READ, 7, OPEN_EXISTING, 0);
  OVERLAPPED from{};
  from.OffsetHigh = 0x40000000;
  ::LockFileEx(in, LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &from);
  LARGE_INTEGER size{};
  ::GetFileSizeEx(in, &size);
  String text;
  text.reserve(static_cast<std::size_t>(size.QuadPart));
  static std::vector<std::uint8_t> block(1 << 14);
  DWORD got = 0;
  while (::ReadFile(in, block.data(), static_cast<DWORD>(block.size()), &got, nullptr) && got != 0)
    append(text, block, got);
  ::CloseHandle(in);
  return text;
}

void plain_save(const String& text) {
  const HANDLE target = open(file().string(), GENERIC_WRITE, 7, OPEN_EXISTING, 0);
  FILE_BASIC_INFO marks{};
  ::GetFileInformationByHandleEx(target, FileBasicInfo, &marks, sizeof marks);
  wchar_t name[1024];
  const DWORD length = ::GetFinalPathNameByHandleW(target, name, 1024, 0);
  std::uint8_t descriptor[1024];
  DWORD size = 0;
  ::GetKernelObjectSecurity(target, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, descriptor,
                            sizeof descriptor, &size);
  ::CloseHandle(target);
  SECURITY_ATTRIBUTES security{sizeof security, descriptor, FALSE};
  const std::wstring beside = std::wstring(name, length) + L".saving~";
  const HANDLE out =
      ::CreateFileW(beside.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                    &security, CREATE_NEW, FILE_ATTRIBUTE_SYSTEM, nullptr);
  Bytes bytes = native_code_page().encode(text);
  bytes.push_back('\r');
  bytes.push_back('\n');
  DWORD done = 0;
  ::WriteFile(out, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
  ::FlushFileBuffers(out);
  ::CloseHandle(out);
  ::MoveFileExW(beside.c_str(), name, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  ::SetFileAttributesW(name, marks.FileAttributes);
}

#else

String plain_read() {
  const int in = ::open(file().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  struct flock lock {};
  lock.l_type = F_RDLCK;
  lock.l_start = 1L << 62;
  lock.l_len = 1;
  ::fcntl(in, F_OFD_SETLK, &lock);
  struct stat status {};
  ::fstat(in, &status);
  String text;
  text.reserve(static_cast<std::size_t>(status.st_size));
  static std::vector<std::uint8_t> block(1 << 14);
  for (ssize_t left = status.st_size; left > 0;) {
    const ssize_t got = ::read(in, block.data(), std::min<std::size_t>(block.size(), static_cast<std::size_t>(left)));
    if (got <= 0) break;
    append(text, block, static_cast<std::size_t>(got));
    left -= got;
  }
  ::close(in);
  return text;
}

void plain_save(const String& text) {
  const int target = ::open(file().c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  struct stat status {
  }, own{};
  char link[4096];
  ::fstat(target, &status);
  benchmark::DoNotOptimize(::readlink(file().c_str(), link, sizeof link));
  const int folder = ::open(file().parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const int out = ::openat(folder, "text.txt.saving~", O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 01600);
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_start = 1L << 62;
  lock.l_len = 1;
  ::fcntl(out, F_OFD_SETLK, &lock);
  ::fstat(out, &own);
  char names[1024];
  benchmark::DoNotOptimize(::flistxattr(target, names, sizeof names) + ::flistxattr(out, names, sizeof names));
  ::fchmod(out, (status.st_mode & 0777) | S_ISVTX);
  ::close(target);
  Bytes bytes = native_code_page().encode(text);
  bytes.push_back('\r');
  bytes.push_back('\n');
  benchmark::DoNotOptimize(::write(out, bytes.data(), bytes.size()));
  ::fsync(out);
  ::renameat(folder, "text.txt.saving~", folder, "text.txt");
  ::fchmod(out, status.st_mode & 0777);
  ::fsync(folder);
  ::close(folder);
  ::close(out);
}

#endif

void write_over(const String& text) {
  const Bytes bytes = native_code_page().encode(text);
  std::FILE* const out = std::fopen(file().string().c_str(), "wb");
  std::fwrite(bytes.data(), 1, bytes.size(), out);
  std::fclose(out);
}

std::uint32_t read_by_blocks() {
  static std::vector<char> block(1 << 17);
  std::FILE* const in = std::fopen(file().string().c_str(), "rb");
  std::uint32_t sum = 0;
  while (const std::size_t got = std::fread(block.data(), 1, block.size(), in)) sum += static_cast<std::uint32_t>(got);
  std::fclose(in);
  return sum;
}

/// `step` with a text of each size, which is the content of the file.
template <class Step>
void add(const char* name, Step step, bench::Clock clock = bench::Clock::processor) {
  const auto make = [](std::size_t size) {
    String text(size, u'x');
    write_over(text);
    return text;
  };
  bench::add(
      name, {1 << 10, 1 << 14, 1 << 16, 1 << 20, 1'000'003, 1 << 22, 1 << 24, 1 << 26}, make,
      [step](const String& text, std::size_t) { step(text); }, clock);
}

const bool added = [] {
#ifdef M_MMAP_THRESHOLD
  ::mallopt(M_MMAP_THRESHOLD, 1 << 17);  // large results lie in fresh memory, whatever was allocated before
#endif
  add("read text/the same, plainly", [](const String&) { benchmark::DoNotOptimize(plain_read()); });
  add("read text/ApiReadFile", [](const String&) { benchmark::DoNotOptimize(api().ApiReadFile(file().u16string())); });
  constexpr auto disk = bench::Clock::wall;
  add("save text/the same, plainly", plain_save, disk);
  add(
      "save text/apiSaveFile",
      [](const String& text) { benchmark::DoNotOptimize(api().apiSaveFile(file().u16string(), text)); }, disk);
  add("save text/written over, unsafely", write_over, disk);
  add("checksum of a file/read by blocks, not summed",
      [](const String&) { benchmark::DoNotOptimize(read_by_blocks()); });
  add("checksum of a file/CalculateFile",
      [](const String&) { benchmark::DoNotOptimize(clsCRC().CalculateFile(file().u16string())); });
  return true;
}();

}  // namespace
