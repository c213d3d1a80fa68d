#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "platform/windows/error.h"
#include "platform/windows/file_name.h"
#include "platform/windows/output_file.h"
#include "platform/windows/patience.h"

namespace tornby::windows {
namespace {

/// By this attribute, which is hardly ever given to a file that is not hidden, a new file that its maker has left is
/// known as such.
constexpr DWORD mark = FILE_ATTRIBUTE_SYSTEM;

/// Spares the disk what does not live long; not every file system keeps it.
constexpr DWORD short_lived = FILE_ATTRIBUTE_TEMPORARY;

constexpr int most_names = 100;
constexpr DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void fail() {
  throw file_error(::GetLastError());
}

FILE_BASIC_INFO basic_information(const FileHandle& file) {
  FILE_BASIC_INFO information{};
  if (!::GetFileInformationByHandleEx(file.get(), FileBasicInfo, &information, sizeof information)) information = {};
  return information;
}

void remove(FileHandle& file) {
  FILE_DISPOSITION_INFO removed{TRUE};
  ::SetFileInformationByHandle(file.get(), FileDispositionInfo, &removed, sizeof removed);
  file.close();
}

/// The name behind links and short names, in the file's own spelling. Empty where the system does not tell.
std::wstring final_name(const FileHandle& file) {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        ::GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()), FILE_NAME_NORMALIZED);
    const bool fits = length < name.size();
    name.resize(length);
    if (fits) return name;
  }
}

/// Whether the file holds more than its one content: other streams would be lost with it.
bool has_other_streams(const FileHandle& file) {
  alignas(FILE_STREAM_INFO) std::array<std::uint8_t, 1024> buffer{};
  if (!::GetFileInformationByHandleEx(file.get(), FileStreamInfo, buffer.data(), buffer.size()))
    return ::GetLastError() == ERROR_MORE_DATA;
  return reinterpret_cast<const FILE_STREAM_INFO*>(buffer.data())->NextEntryOffset != 0;
}

/// Owner and access list.
class Security {
 public:
  Security(const FileHandle& file, SECURITY_INFORMATION parts) {
    DWORD size = 0;
    buffer_.resize(512);
    while (!::GetKernelObjectSecurity(file.get(), parts, descriptor(), static_cast<DWORD>(buffer_.size()), &size)) {
      const DWORD error = ::GetLastError();
      const bool too_small = error == ERROR_INSUFFICIENT_BUFFER;
      buffer_.resize(too_small ? size : 0);
      exists_ = error != ERROR_NOT_SUPPORTED && error != ERROR_INVALID_FUNCTION;
      if (!too_small) return;
    }
  }

  /// Also where the file system has no such thing.
  bool is_known() const { return !buffer_.empty() || !exists_; }

  /// For a file that inherits nothing from its folder.
  SECURITY_ATTRIBUTES* apart() {
    if (buffer_.empty()) return nullptr;
    DWORD revision = 0;
    ::GetSecurityDescriptorControl(descriptor(), &control_, &revision);
    ::SetSecurityDescriptorControl(descriptor(), SE_DACL_PROTECTED, SE_DACL_PROTECTED);
    attributes_ = {sizeof attributes_, descriptor(), FALSE};
    return &attributes_;
  }

  /// After `apart`: lets the file have the same list as one that it inherits in part, where the user may change lists.
  void let_inherit(const std::wstring& name) {
    if (buffer_.empty() || (control_ & SE_DACL_PROTECTED) || !(control_ & SE_DACL_AUTO_INHERITED)) return;
    constexpr SECURITY_DESCRIPTOR_CONTROL all = SE_DACL_PROTECTED | SE_DACL_AUTO_INHERIT_REQ | SE_DACL_AUTO_INHERITED;
    ::SetSecurityDescriptorControl(descriptor(), all, SE_DACL_AUTO_INHERIT_REQ | SE_DACL_AUTO_INHERITED);
    const FileHandle file(::CreateFileW(name.c_str(), WRITE_DAC, everybody, nullptr, OPEN_EXISTING, 0, nullptr));
    if (file) ::SetKernelObjectSecurity(file.get(), DACL_SECURITY_INFORMATION, descriptor());
  }

 private:
  PSECURITY_DESCRIPTOR descriptor() { return buffer_.data(); }

  std::vector<std::uint8_t> buffer_;
  bool exists_ = true;
  SECURITY_DESCRIPTOR_CONTROL control_ = 0;
  SECURITY_ATTRIBUTES attributes_{};
};

/// What renames a file over another one.
class Renaming {
 public:
  explicit Renaming(const std::wstring& target)
      : size_(static_cast<DWORD>(sizeof(FILE_RENAME_INFO) + target.size() * sizeof(wchar_t))), buffer_(size_) {
    information()->FileNameLength = static_cast<DWORD>(target.size() * sizeof(wchar_t));
    std::memcpy(information()->FileName, target.data(), target.size() * sizeof(wchar_t));
  }

  /// Waits half a second for those who have the other file open.
  bool carry_out(const FileHandle& file) {
    bool renamed = false;
    patiently(half_a_second, [&] {
      renamed = attempt(file);
      const DWORD error = renamed ? ERROR_SUCCESS : ::GetLastError();
      return error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION && error != ERROR_USER_MAPPED_FILE;
    });
    return renamed;
  }

 private:
  FILE_RENAME_INFO* information() { return reinterpret_cast<FILE_RENAME_INFO*>(buffer_.data()); }

  /// Newer systems replace a file that is open for deletion too, as our own readers open it.
  bool attempt(const FileHandle& file) {
    constexpr auto with_flags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
    constexpr DWORD replace = 1, posix_semantics = 2;
    const DWORD flags = replace | posix_semantics;
    std::memcpy(buffer_.data(), &flags, sizeof flags);
    if (::SetFileInformationByHandle(file.get(), with_flags, information(), size_)) return true;
    std::memset(buffer_.data(), 0, sizeof flags);
    information()->ReplaceIfExists = TRUE;
    return ::SetFileInformationByHandle(file.get(), FileRenameInfo, information(), size_) != 0;
  }

  DWORD size_;
  std::vector<std::uint8_t> buffer_;
};

/// The new file has a name of its own as long as `name_` says so. While it is open nobody else can open it for
/// removal, which shows that this process lives.
class WindowsReplacement final : public Replacement {
 public:
  explicit WindowsReplacement(std::wstring target) : target_(std::move(target)), renaming_(target_) {}
  ~WindowsReplacement() override {
    if (!kept_) remove_own();
  }

  /// False when no file can be made in the folder.
  bool create(DWORD attributes, SECURITY_ATTRIBUTES* security) {
    for (int number = 1; number <= most_names; ++number) {
      std::wstring name = name_beside(target_, L".saving~", number);
      file_ = FileHandle(::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                       FILE_SHARE_READ | FILE_SHARE_DELETE, security, CREATE_NEW,
                                       attributes | mark | short_lived, nullptr));
      if (file_) {
        name_ = std::move(name);
        return true;
      }
      const DWORD error = ::GetLastError();
      if (::GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES) {
        remember_leftover(name);
      } else if (error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL) {
        throw file_error(error);
      } else if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) {
        ::SetLastError(error);
        return false;
      }
    }
    return false;
  }

  const FileHandle& file() const { return file_; }
  const std::wstring& name() const { return name_; }

  /// To be like the target, for `commit`.
  void take_after(const FILE_BASIC_INFO& target, bool completely) {
    attributes_ = target;
    is_like_target_ = completely;
  }

  void write(ByteView bytes) override { write_all(file_, bytes); }

  bool commit() override {
    if (!::FlushFileBuffers(file_.get())) fail();
    // Nobody else who opens the target without sharing its writing shall fail.
    FileHandle renamer(::CreateFileW(name_.c_str(), GENERIC_READ | FILE_WRITE_ATTRIBUTES | DELETE, everybody, nullptr,
                                     OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_WRITE_THROUGH, nullptr));
    if (!renamer) fail();
    file_ = std::move(renamer);
    renamer.close();
    if (!is_like_target_ || !renaming_.carry_out(file_)) return false;
    name_.clear();
    ::SetFileInformationByHandle(file_.get(), FileBasicInfo, &attributes_, sizeof attributes_);
    file_.close();
    remove_leftovers();
    return true;
  }

  std::size_t read(std::uint64_t position, std::span<std::uint8_t> out) override {
    LARGE_INTEGER from{};
    from.QuadPart = static_cast<LONGLONG>(position);
    DWORD got = 0;
    if (!::SetFilePointerEx(file_.get(), from, nullptr, FILE_BEGIN) ||
        !::ReadFile(file_.get(), out.data(), static_cast<DWORD>(out.size()), &got, nullptr))
      fail();
    return got;
  }

  void keep() override { kept_ = true; }

  void done() override {
    remove_own();
    remove_leftovers();
  }

 private:
  void remove_own() {
    if (!name_.empty()) remove(file_);
    name_.clear();
  }

  /// What a dead process left, opened so that nobody else can open it.
  void remember_leftover(const std::wstring& name) {
    FileHandle file(
        ::CreateFileW(name.c_str(), DELETE, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file) return;
    const DWORD attributes = basic_information(file).FileAttributes;
    if ((attributes & mark) && !(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)))
      leftovers_.push_back(std::move(file));
  }

  /// Only once the target holds the new text: one of them may be all that is left of an earlier text. The first one
  /// goes last, so that the others are still found should this process die meanwhile.
  void remove_leftovers() {
    for (; !leftovers_.empty(); leftovers_.pop_back()) remove(leftovers_.back());
  }

  std::wstring target_;
  Renaming renaming_;
  std::wstring name_;
  FileHandle file_{INVALID_HANDLE_VALUE};
  FILE_BASIC_INFO attributes_{};
  bool is_like_target_ = true;
  bool kept_ = false;
  std::vector<FileHandle> leftovers_;
};

std::unique_ptr<Replacement> start_new(const std::wstring& name) {
  // A link that leads nowhere is not for us to replace.
  if (::GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES) return nullptr;
  auto replacement = std::make_unique<WindowsReplacement>(name);
  if (!replacement->create(0, nullptr)) fail();
  FILE_BASIC_INFO attributes{};
  attributes.FileAttributes = FILE_ATTRIBUTE_ARCHIVE;
  replacement->take_after(attributes, true);
  return replacement;
}

}  // namespace

std::unique_ptr<Replacement> start_replacement(const std::wstring& name) {
  const FileHandle target = open_shared(name, OPEN_EXISTING);
  if (!target) {
    if (::GetLastError() == ERROR_FILE_NOT_FOUND) return start_new(name);
    fail();
  }
  if (::GetFileType(target.get()) != FILE_TYPE_DISK) return nullptr;

  // What is not known of the target cannot be given to the new file, and so the target is written over then.
  const FILE_BASIC_INFO information = basic_information(target);
  if (information.FileAttributes & FILE_ATTRIBUTE_READONLY)  // which a superuser may write on some file systems
    throw RuntimeError(StandardError::permission_denied);
  std::wstring own_name = final_name(target);
  constexpr SECURITY_INFORMATION list = DACL_SECURITY_INFORMATION;
  Security security(target, list | OWNER_SECURITY_INFORMATION);
  bool completely =
      information.FileAttributes != 0 && !own_name.empty() && security.is_known() && !has_other_streams(target);
  if (!security.is_known()) return nullptr;

  constexpr DWORD settable = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
  constexpr DWORD secret = FILE_ATTRIBUTE_ENCRYPTED;
  const DWORD given = information.FileAttributes;
  auto replacement = std::make_unique<WindowsReplacement>(own_name.empty() ? name : std::move(own_name));
  bool created = replacement->create(given & (settable | secret), security.apart());
  if (!created && ::GetLastError() == ERROR_INVALID_OWNER) {
    completely = false;
    security = Security(target, list);
    created = security.is_known() && replacement->create(given & (settable | secret), security.apart());
  }
  if (!created) return nullptr;
  if ((given & secret) && !(basic_information(replacement->file()).FileAttributes & secret)) return nullptr;
  security.let_inherit(replacement->name());

  FILE_BASIC_INFO wanted{};
  wanted.CreationTime = information.CreationTime;
  wanted.FileAttributes = (given & settable) | FILE_ATTRIBUTE_ARCHIVE;
  replacement->take_after(wanted, completely);
  return replacement;
}

void set_aside(const std::wstring& name) {
  if (name.starts_with(LR"(\\.\)")) return;  // a device
  const DWORD attributes = ::GetFileAttributesW(name.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY)
    throw file_error(ERROR_ACCESS_DENIED);
  constexpr int most = 1000;
  for (int number = 1; number <= most; ++number) {
    if (::MoveFileExW(name.c_str(), name_beside(name, L".unread~", number).c_str(), 0)) return;
    const DWORD error = ::GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return;
    if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) throw file_error(error);
  }
  throw file_error(ERROR_ALREADY_EXISTS);
}

}  // namespace tornby::windows
