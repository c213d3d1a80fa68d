// Who owns a file and who may do what with it.
#pragma once

#include <sys/stat.h>

#include "platform/posix/descriptor.h"

namespace tornby::posix {

/// Gives the file `to`, which nobody else may open yet, the owner, group, access list, extended attributes and rights
/// of `from`, whose status is `status`; `mark` is added to the rights. At no moment may anybody do more with the one
/// than with the other. False when any of it is refused.
bool carry_over(const Descriptor& from, const struct stat& status, const Descriptor& to, mode_t mark);

}  // namespace tornby::posix
