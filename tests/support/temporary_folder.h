// A folder of its own for each test.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include "base/text.h"

namespace tornby::testing {

/// A new folder, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device seed;
    do {
      path_ = std::filesystem::temp_directory_path() / ("tornby" + std::to_string(seed()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  String name_of(std::string_view file) const { return (path_ / file).u16string(); }

  /// Makes a file of these bytes and returns its full name.
  String write(std::string_view file, std::string_view bytes) const {
    std::ofstream(path_ / file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return name_of(file);
  }

  std::string read(std::string_view file) const {
    std::ifstream in(path_ / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tornby::testing
