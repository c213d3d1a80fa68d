// One target, driven by libFuzzer. TARGET is its name.
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tornby::fuzz::TARGET(tornby::fuzz::Input({data, size}));
  return 0;
}
