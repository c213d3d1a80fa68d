// Locks on files, between the processes that use this library.
//
// They are put on bytes that no file reaches, so that they stand in no other program's way, and belong to the
// descriptor: closing it, or the end of the process, releases them.
#pragma once

#include "platform/posix/descriptor.h"

namespace tornby::posix {

/// Held by readers together and by a writer alone while the file's content is being read or written over. Waits for a
/// few seconds; raises 70 (permission denied) when it is not granted then. A file system without locks grants every
/// one.
void lock_for_reading(const Descriptor& file);
void lock_for_writing(const Descriptor& file);
void unlock(const Descriptor& file);

/// Shows that the process that writes a new file is alive. False when another process holds the lock; where there are
/// no locks, `without_locks`.
bool lock_for_life(const Descriptor& file, bool without_locks);

}  // namespace tornby::posix
