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
  /// Wherever another program could write the file, this succeeds, but for a full disk. The text is written to a new
  /// file beside the target, whose name has ".saving~" added, and reaches the disk before that file takes the target's
  /// place. So the target holds either its earlier content whole or the new one whole, also when the disk is full, the
  /// replacement is refused or the process is killed; what the latter leaves behind is removed by the next save to the
  /// same file. The target keeps its owner, access rights and lists, extended attributes and, on Windows, the hidden
  /// and similar marks, and at no moment may anybody read the new text who could not read the old one. A symbolic link
  /// stays a link, to the file that it leads to. Another hard link to the target keeps the earlier content. Files whose
  /// names end in ".saving~" for reasons of their own are left alone.
  ///
  /// Where the replacement is refused, the text is written over the earlier content: on Windows when another program
  /// has had the file open for half a second, in folders where nothing can be renamed, and where the new file could not
  /// have all that the target has (its owner, a second stream). The new text stays beside the target until that is
  /// done, under the name above, and also when the process is killed or the writing fails meanwhile: then that file,
  /// of which the next save disposes, holds it whole. Only where no file can be made beside the target, as in a folder
  /// without write permission, and for devices, there is none. A full disk does no harm in any of these ways.
  ///
  /// Several processes may save to one file at once, and others read it with ApiReadFile: each save succeeds, the last
  /// one stays, and nobody reads a mixture.
  ///
  /// False: the folder does not exist, the file is read-only, the target is a folder or a pipe, another program keeps
  /// others from writing the file for longer than half a second, a device does not take the text within five, the disk
  /// is full, memory runs out, and so on.
  bool apiSaveFile(StringView file_name, StringView text) const;

  /// The whole file as a string, each byte a character (in a code page with two-byte characters, each character).
  /// Line breaks are left as they are. When the file shrinks meanwhile the text ends where it ends; when it grows, the
  /// text has the length that the file had at first.
  /// Others may write, rename or delete the file meanwhile. One that apiSaveFile is writing over is waited for.
  /// Empty for an empty file, one of 2 GiB or more, one that memory does not hold, what is no file (a pipe or a
  /// device), and after any other failure.
  String ApiReadFile(StringView file_name) const;

 private:
  void save(StringView file_name, StringView text) const;

  const AnsiCodePage* code_page_;
  const Files* files_;
  const MousePointer* pointer_;
};

}  // namespace tornby
