#include "checksums/hex/kernels.h"

namespace tornby::hex {
#define TORNBY_VARIANT(name)                                                               \
  namespace name {                                                                         \
  void encode(const std::uint8_t* bytes, std::size_t groups, std::uint8_t* digits);        \
  std::size_t decode(const std::uint8_t* digits, std::size_t groups, std::uint8_t* bytes); \
  }
TORNBY_VARIANT(avx2)
TORNBY_VARIANT(avx)
TORNBY_VARIANT(ssse3)

namespace {

constexpr Codec list[] = {
#ifdef TORNBY_X86_KERNELS
    {"256 bits", wide_vectors, avx2::encode, avx2::decode},
    {"128 bits", newer_encoding, avx::encode, avx::decode},
    {"128 bits, older encoding", byte_shuffle, ssse3::encode, ssse3::decode},
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

}  // namespace tornby::hex
