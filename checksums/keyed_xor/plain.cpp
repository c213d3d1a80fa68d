// One pass over the key after the other.
#include <algorithm>

#include "checksums/keyed_xor/kernels.h"

namespace tornby::keyed_xor {

void apply_plain(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key,
                 std::size_t key_size, std::size_t phase) {
  while (size != 0) {
    const std::size_t run = std::min(size, key_size - phase);
    for (std::size_t i = 0; i < run; ++i) to[i] = from[i] ^ key[phase + i];
    from += run;
    to += run;
    size -= run;
    phase = 0;
  }
}

}  // namespace tornby::keyed_xor
