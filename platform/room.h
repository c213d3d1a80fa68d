// Whether a buffer of some size could be had.
#pragma once

#include <cstddef>

namespace tornby {

/// Raises std::bad_alloc when the process has no room for `size` bytes in one piece. Nothing is kept, and the memory is
/// never touched, so asking costs the same for any size.
void require_room(std::size_t size);

}  // namespace tornby
