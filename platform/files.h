// Files, whole and in binary.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "base/text.h"

namespace tornby {

/// A file open for reading. Destroying it closes it.
class InputFile {
 public:
  virtual ~InputFile() = default;

  /// The length in bytes at this moment.
  virtual std::uint64_t size() const = 0;

  /// Reads until `out` is full or the file ends, and returns how many bytes were read. Raises a RuntimeError when the
  /// system fails to read.
  virtual std::size_t read(std::span<std::uint8_t> out) = 0;

  /// Gives up the handle without closing it; it stays open until the process ends. Only for the members whose
  /// contract says that a failure leaves the file open.
  virtual void leave_open() = 0;
};

/// The file system. A name that the system cannot express is refused with "Bad file name or number" (52); other
/// failures raise 53 (no such file), 76 (no such folder), 70 (permission denied) or 75 (any other access error).
class Files {
 public:
  virtual ~Files() = default;

  /// The length in bytes of the file of that name, taken without opening it. A folder is an error (75).
  virtual std::uint64_t size(StringView name) const = 0;

  virtual std::unique_ptr<InputFile> open_for_reading(StringView name) const = 0;
};

const Files& native_files();

}  // namespace tornby
