// A short key is written out several times first, so that the passes are long enough for vectors.
#include "checksums/keyed_xor/kernels.h"

namespace tornby::keyed_xor {
namespace {

constexpr std::size_t least_pass = 64;
constexpr std::size_t passes_that_pay = 4;

}  // namespace

void apply_repeated(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key,
                    std::size_t key_size, std::size_t phase) {
  if (key_size >= least_pass || size < passes_that_pay * least_pass)
    return apply_plain(from, to, size, key, key_size, phase);

  std::uint8_t pass[2 * least_pass];
  std::size_t pass_size = 0;
  while (pass_size < least_pass)
    for (std::size_t i = 0; i < key_size; ++i) {
      pass[pass_size++] = key[phase];
      phase = phase + 1 == key_size ? 0 : phase + 1;
    }
  for (; size >= pass_size; size -= pass_size, from += pass_size, to += pass_size)
    for (std::size_t i = 0; i < pass_size; ++i) to[i] = from[i] ^ pass[i];
  for (std::size_t i = 0; i < size; ++i) to[i] = from[i] ^ pass[i];
}

}  // namespace tornby::keyed_xor
