// Whole text files: read into a string, and saved from one.
//
// A file's text is in the ANSI code page. Neither member raises an error: a failure is a false or empty result.
#pragma once

#include <tornby/base/ansi_code_page.h>
#include <tornby/base/text.h>
#include <tornby/platform/code_page.h>
#include <tornby/platform/files.h>
#include <tornby/platform/pointer.h>

namespace tornby {

class clsApi {
 public:
  explicit clsApi(const AnsiCodePage& code_page = native_code_page(), const Files& files = native_files(),
                  const MousePointer& pointer = native_pointer());

  /// Makes `text`, followed by CR LF, the whole content of the file, and tells whether that succeeded. A character
  /// that the code page lacks becomes its substitute there, mostly "?". Meanwhile the mouse pointer is the hourglass,
  /// if a window of the calling thread is the active one.
  ///
  /// The text is written to a new file beside the target, whose name has ".saving~" added, and reaches the disk before
  /// that file takes the target's place. So the target holds either its earlier content whole or the new one whole,
  /// also when the disk is full, the replacement is refused or the process is killed; whatever the latter leaves behind
  /// is removed by the next save to the same file. The target's attributes stay (access rights, and on Windows the
  /// hidden and similar marks), and a symbolic link stays a link, to the file that it leads to. Another hard link to
  /// the target keeps the earlier content.
  ///
  /// Where no file can be made beside the target, as in a folder without write permission, and where the target is a
  /// device, the text is written over the earlier content. A full disk does no harm then either; being killed may.
  ///
  /// False: the folder does not exist, the file is read-only, the target is a folder, another program keeps the file
  /// open, another process is saving to it at this moment, the disk is full, and so on.
  bool apiSaveFile(StringView file_name, StringView text) const;

  /// The whole file as a string, each byte a character (in a code page with two-byte characters, each character).
  /// Line breaks are left as they are. When the file shrinks meanwhile the text ends where it ends; when it grows, the
  /// text has the length that the file had at first.
  /// Empty for an empty file, one of 2 GiB or more, one that memory does not hold, and after any other failure.
  String ApiReadFile(StringView file_name) const;

 private:
  void save(StringView file_name, ByteView bytes) const;

  const AnsiCodePage* code_page_;
  const Files* files_;
  const MousePointer* pointer_;
};

}  // namespace tornby
