// Files, whole and in binary.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include <tornby/base/text.h>

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

/// A file open for writing. Destroying it closes it. Failures are raised: 61 (disk full), 57 (device error) or those of
/// `Files`.
class OutputFile {
 public:
  virtual ~OutputFile() = default;

  /// The length in bytes at this moment; 0 for a device.
  virtual std::uint64_t size() const = 0;

  /// Writes all of `bytes` from `position` on. A device takes them as they come.
  virtual void write(std::uint64_t position, ByteView bytes) = 0;

  /// Cuts the file off, or lengthens it. Nothing happens to a device.
  virtual void resize(std::uint64_t size) = 0;

  /// Returns when everything written has reached the disk.
  virtual void flush() = 0;
};

/// A new file beside its target, until `commit` puts it in the target's place. Destroying it without that removes it.
class Replacement : public OutputFile {
 public:
  /// Takes the target's place and attributes in one step: whoever opens the target sees the one file or the other,
  /// whole. When that is refused the target is as before. To be called once, after `flush`, as the last thing.
  virtual void commit() = 0;
};

/// The file system. A name that the system cannot express is refused with "Bad file name or number" (52); other
/// failures raise 53 (no such file), 76 (no such folder), 70 (permission denied) or 75 (any other access error).
class Files {
 public:
  virtual ~Files() = default;

  /// The length in bytes of the file of that name, taken without opening it. A folder is an error (75).
  virtual std::uint64_t size(StringView name) const = 0;

  virtual std::unique_ptr<InputFile> open_for_reading(StringView name) const = 0;

  /// An existing file or device, its content kept.
  virtual std::unique_ptr<OutputFile> open_for_writing(StringView name) const = 0;

  /// Starts a replacement of the file that `name` leads to, through symbolic links; it need not exist. What a process
  /// that died left behind there is removed first; a live one is not disturbed (70). A file that may not be written is
  /// refused (70), and so is a folder (75).
  /// Null where nothing can take the target's place: it is a device, or no file can be made in its folder under its
  /// name with ".saving~" added.
  virtual std::unique_ptr<Replacement> replace(StringView name) const = 0;

  /// Gives the file of that name another one beside it: its own with ".unread~" added or, where there is such a file
  /// already, ".unread~2", ".unread~3" and so on. No other file is ever overwritten. Nothing happens when there is no
  /// such file.
  virtual void set_aside(StringView name) const = 0;
};

const Files& native_files();

}  // namespace tornby
