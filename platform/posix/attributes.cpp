#include "platform/posix/attributes.h"

#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tornby::posix {
namespace {

/// What `call(buffer, capacity)` writes, however long it is. None when it fails.
template <class Call>
std::optional<std::string> whole_answer(Call call) {
  for (;;) {
    const ssize_t size = call(nullptr, 0);
    if (size <= 0) return size == 0 ? std::optional<std::string>("") : std::nullopt;
    std::string answer(static_cast<std::size_t>(size), '\0');
    const ssize_t written = call(answer.data(), answer.size());
    if (written < 0 && errno == ERANGE) continue;  // it has grown
    if (written < 0) return {};
    answer.resize(static_cast<std::size_t>(written));
    return answer;
  }
}

/// The names of the extended attributes, access lists among them; none where the file system has no such thing.
std::optional<std::vector<std::string>> attribute_names(const Descriptor& file) {
  const auto list = whole_answer([&](char* out, std::size_t size) { return ::flistxattr(file.get(), out, size); });
  if (!list && errno != ENOTSUP) return {};
  std::vector<std::string> names;
  if (list)
    for (std::size_t i = 0; i < list->size(); i += names.back().size() + 1) names.emplace_back(list->c_str() + i);
  return names;
}

std::optional<std::string> attribute(const Descriptor& file, const std::string& name) {
  return whole_answer([&](char* out, std::size_t size) { return ::fgetxattr(file.get(), name.c_str(), out, size); });
}

bool copy_attributes(const Descriptor& from, const Descriptor& to) {
  const auto wanted = attribute_names(from);
  const auto present = attribute_names(to);
  if (!wanted || !present) return false;
  for (const std::string& name : *present)
    if (std::ranges::find(*wanted, name) == wanted->end() && ::fremovexattr(to.get(), name.c_str()) != 0) return false;
  for (const std::string& name : *wanted) {
    const auto value = attribute(from, name);
    if (!value) return false;
    if (attribute(to, name) != value && ::fsetxattr(to.get(), name.c_str(), value->data(), value->size(), 0) != 0)
      return false;
  }
  return true;
}

bool has_rights(const Descriptor& file, mode_t rights) {
  struct stat status {};
  return ::fstat(file.get(), &status) == 0 && (status.st_mode & 07777) == rights;
}

}  // namespace

bool carry_over(const Descriptor& from, const struct stat& status, const Descriptor& to, mode_t mark) {
  struct stat own {};
  if (::fstat(to.get(), &own) != 0) return false;
  const bool same_owner = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
  if (!same_owner && ::fchown(to.get(), status.st_uid, status.st_gid) != 0) return false;
  // The access list before the rights: where there is one, the rights of the group bound it.
  if (!copy_attributes(from, to)) return false;
  const mode_t rights = (status.st_mode & 0777) | mark;
  return has_rights(to, rights) || ::fchmod(to.get(), rights) == 0;
}

}  // namespace tornby::posix
