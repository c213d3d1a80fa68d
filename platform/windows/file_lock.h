// Locks on files, between the processes that use this library.
//
// They end with the handle, or with the process. Readers lock a byte that no file reaches, so that they stand in no
// other program's way.
#pragma once

#include "platform/windows/file_handle.h"

namespace tornby::windows {

/// Held by readers together and by a writer alone while the file's content is being read or written over. A writer
/// keeps other programs from reading meanwhile. Waits for a few seconds; raises 70 (permission denied) when it is not
/// granted then. A file system without locks grants every one.
void lock_for_reading(const FileHandle& file);
void lock_for_writing(const FileHandle& file);
void unlock(const FileHandle& file);

}  // namespace tornby::windows
