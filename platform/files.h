// Files, whole and in binary.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include <tornby/base/text.h>

namespace tornby {

/// A file open for reading. Destroying it closes it. Others may write, rename and delete it meanwhile, but an
/// `OutputFile` waits for it.
class InputFile {
 public:
  virtual ~InputFile() = default;

  /// The length in bytes when it was opened.
  virtual std::uint64_t size() const = 0;

  /// Reads until `out` is full or the file ends, and returns how many bytes were read. Raises a RuntimeError when the
  /// system fails to read.
  virtual std::size_t read(std::span<std::uint8_t> out) = 0;

  /// Gives up the handle without closing it; it stays open until the process ends. Only for the members whose
  /// contract says that a failure leaves the file open.
  virtual void leave_open() = 0;
};

/// A file or device being written over. Destroying it closes it. Meanwhile no other process has it open as an
/// `InputFile` or `OutputFile`: who opens it waits, for up to five seconds, and then fails (70). On Windows other
/// programs cannot read it either. Failures are raised: 61 (disk full), 57 (device error) or those of `Files`.
class OutputFile {
 public:
  virtual ~OutputFile() = default;

  /// The length in bytes at this moment; 0 for a device.
  virtual std::uint64_t size() const = 0;

  /// Writes all of `bytes` from `position` on. A device takes them as they come; one that takes nothing for five
  /// seconds is an error.
  virtual void write(std::uint64_t position, ByteView bytes) = 0;

  /// Cuts the file off, or lengthens it. Nothing happens to a device.
  virtual void resize(std::uint64_t size) = 0;

  /// Returns when everything written has reached the disk.
  virtual void flush() = 0;
};

/// A new file beside its target, until `commit` puts it in the target's place. Destroying it without that removes it.
///
/// Its name is the target's with ".saving~" added or, where there is something of that name already, ".saving~2" to
/// ".saving~100"; a name that would become too long is cut off first. It carries a mark, the sticky bit or, on Windows,
/// the system attribute, by which one that a process left when it died is known, and removed when the next replacement
/// has succeeded. What does not carry it, or is open, is not touched. From the moment it is made, nobody may read the
/// new file who may not read the target.
class Replacement {
 public:
  virtual ~Replacement() = default;

  /// Adds `bytes` at the end.
  virtual void write(ByteView bytes) = 0;

  /// Takes the target's place once all that was written has reached the disk, in one step: whoever opens the target
  /// sees the one file or the other, whole. It has the target's owner, group, access list, attributes and extended
  /// attributes. To be called once.
  /// False, and the target is as before, where the system refuses the target's place, on Windows for half a second, or
  /// any of these to the new file. What was written is still there to be read then.
  virtual bool commit() = 0;

  /// Reads back what was written, after `commit` has returned false.
  virtual std::size_t read(std::uint64_t position, std::span<std::uint8_t> out) = 0;

  /// After `commit` has returned false, the target is written over: `keep` before that begins, so that the new file
  /// stays whatever happens, and `done` when it has succeeded.
  virtual void keep() = 0;
  virtual void done() = 0;
};

/// The file system. A name that the system cannot express is refused with "Bad file name or number" (52); other
/// failures raise 53 (no such file), 76 (no such folder), 70 (permission denied) or 75 (any other access error, a pipe
/// among them). A name may be relative, of any length that the system allows, and lead through links and short names.
class Files {
 public:
  virtual ~Files() = default;

  /// The length in bytes of the file of that name, taken without opening it. A folder is an error (75), and so is what
  /// is no file.
  virtual std::uint64_t size(StringView name) const = 0;

  /// A file only: a device is an error (75).
  virtual std::unique_ptr<InputFile> open_for_reading(StringView name) const = 0;

  /// A file or device, its content kept. A file that is missing is made.
  virtual std::unique_ptr<OutputFile> open_for_writing(StringView name) const = 0;

  /// Starts a replacement of the file that `name` leads to; it need not exist. A file that may not be written is
  /// refused (70), and so is a folder (75).
  /// Null where the target is no file, or no file can be made in its folder.
  virtual std::unique_ptr<Replacement> replace(StringView name) const = 0;

  /// Gives the file of that name another one beside it: its own with ".unread~" added or, where there is such a file
  /// already, ".unread~2", ".unread~3" and so on. No other file is ever overwritten. Nothing happens when there is no
  /// such file, or when it is a device or a pipe; a folder of that name is an error and stays.
  virtual void set_aside(StringView name) const = 0;
};

const Files& native_files();

}  // namespace tornby
