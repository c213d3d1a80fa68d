// Initialisation files: "key=value" lines in sections, as Windows keeps them.
#pragma once

#include <cstddef>
#include <cstdint>

#include <tornby/base/text.h>

namespace tornby {

/// A system without such files has no folder for them, reads nothing and loses what is written.
class ProfileFiles {
 public:
  virtual ~ProfileFiles() = default;

  /// The folder that they stand in, the Windows folder. Empty when its name takes `capacity` characters or more.
  virtual String folder(std::size_t capacity) = 0;

  /// The value, of which at most `capacity - 1` characters are read; empty when file, section, key or value are
  /// missing.
  virtual String read_text(StringView file, StringView section, StringView key, std::size_t capacity) = 0;

  /// The value as a number; `otherwise` when file, section or key are missing, 0 when the value is no number.
  virtual std::int32_t read_number(StringView file, StringView section, StringView key, std::int32_t otherwise) = 0;

  /// Writes the value up to its first NUL or line break. False when that fails.
  virtual bool write_text(StringView file, StringView section, StringView key, StringView value) = 0;
};

ProfileFiles& native_profile_files();

}  // namespace tornby
