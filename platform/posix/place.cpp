#include "platform/posix/place.h"

#include <fcntl.h>

#include <array>
#include <cerrno>

#include "platform/posix/error.h"
#include "platform/posix/system_call.h"

namespace tornby::posix {
namespace {

std::string follow_links(std::string name) {
  constexpr int most_links = 40;
  for (int links = 0; links < most_links; ++links) {
    std::array<char, 4096> buffer;
    const ssize_t length = ::readlink(name.c_str(), buffer.data(), buffer.size());
    if (length < 0) return name;
    const std::string destination(buffer.data(), static_cast<std::size_t>(length));
    const std::size_t folder = destination.starts_with('/') ? 0 : name.rfind('/') + 1;
    name.resize(folder);
    name += destination;
  }
  throw file_error(ELOOP);
}

std::size_t longest_name(const Descriptor& folder) {
  constexpr long usual = 255;
  const long longest = ::fpathconf(folder.get(), _PC_NAME_MAX);
  return static_cast<std::size_t>(longest > 0 ? longest : usual);
}

}  // namespace

Place place_of(std::string name) {
  name = follow_links(std::move(name));
  const std::size_t start = name.rfind('/') + 1;
  const std::string folder = start == 0 ? "." : name.substr(0, start);
  Place place{open_at(AT_FDCWD, folder.c_str(), O_RDONLY | O_DIRECTORY), name.substr(start)};
  if (!place.folder && errno == EACCES) place.folder = open_at(AT_FDCWD, folder.c_str(), O_PATH | O_DIRECTORY);
  if (!place.folder) throw file_error(errno);
  return place;
}

std::string name_beside(const Place& place, const char* ending, int number) {
  constexpr std::size_t surely_short = 100;
  std::string end = ending;
  if (number > 1) end += std::to_string(number);
  std::string name = place.name;
  const std::size_t longest = name.size() <= surely_short ? name.size() : longest_name(place.folder) - end.size();
  if (name.size() > longest) {
    std::size_t cut = longest;
    while (cut > 0 && (static_cast<unsigned char>(name[cut]) & 0xC0) == 0x80) --cut;  // between characters
    name.resize(cut);
  }
  return name + end;
}

}  // namespace tornby::posix
