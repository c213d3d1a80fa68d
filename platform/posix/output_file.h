// Files open for writing, and replacements.
#pragma once

#include <memory>
#include <string>

#include "platform/files.h"

namespace tornby::posix {

/// What the members of `Files` do, for a name in the system's form.
std::unique_ptr<OutputFile> open_output(const std::string& name);
std::unique_ptr<Replacement> start_replacement(const std::string& name);
void set_aside(const std::string& name);

}  // namespace tornby::posix
