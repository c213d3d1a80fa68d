// Files open for writing, and replacements.
#pragma once

#include <memory>
#include <string>

#include "platform/files.h"
#include "platform/windows/file_handle.h"

namespace tornby::windows {

/// What the members of `Files` do, for a name that `file_name` made.
std::unique_ptr<OutputFile> open_output(const std::wstring& name);
std::unique_ptr<Replacement> start_replacement(const std::wstring& name);
void set_aside(const std::wstring& name);

/// Opens for writing, shared with everybody; waits half a second for a program that does not share it. No handle when
/// that fails.
FileHandle open_shared(const std::wstring& name, DWORD disposition);

/// Writes all of `bytes` where the file stands.
void write_all(const FileHandle& file, ByteView bytes);

}  // namespace tornby::windows
