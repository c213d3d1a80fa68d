#include "checksums/base64/kernels.h"

namespace tornby::base64 {
namespace {

constexpr Codec list[] = {
#ifdef TORNBY_X86_KERNELS
    {"shuffled", byte_shuffle, encode_shuffled, decode_shuffled},
#endif
    {"plain", no_features, encode_plain, decode_plain},
};
constinit Chosen<Codec> chosen(list);
[[maybe_unused]] const bool has_choice = chosen.choose(list);

}  // namespace

std::span<const Codec> kernels() {
  return list;
}

const Codec& best() {
  return *chosen;
}

}  // namespace tornby::base64
