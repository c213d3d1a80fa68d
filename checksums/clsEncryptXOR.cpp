#include "checksums/clsEncryptXOR.h"

#include <algorithm>
#include <array>
#include <bit>

#include "base/runtime_error.h"
#include "base/written.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"

namespace tornby {
namespace {

// Text passes through blocks of this many bytes, which stay in the processor's nearest memory.
constexpr std::size_t block_size = 4096;

static_assert(std::endian::native == std::endian::little, "a string's storage has the low byte first");

ByteView storage(StringView text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size() * sizeof(char16_t)};
}

/// The key going round: each block goes on where the one before stopped.
class Cipher {
 public:
  explicit Cipher(StringView key) : key_(storage(key)) {}

  void apply(ByteView from, void* to) {
    keyed_xor::apply(from.data(), static_cast<std::uint8_t*>(to), from.size(), key_.data(), key_.size(), phase_);
    phase_ = (phase_ + from.size()) % key_.size();
  }

 private:
  ByteView key_;
  std::size_t phase_ = 0;
};

bool is_blank(char16_t character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

[[noreturn]] void refuse() {
  throw RuntimeError(StandardError::type_mismatch);
}

bool is_digit(char16_t character) {
  const char16_t pair[] = {u'0', character};
  std::uint8_t ignored = 0;
  return hex::best().decode_units(pair, 1, &ignored) == 1;
}

}  // namespace

String clsEncryptXOR::Decrypt(StringView text) const {
  return Encrypt(text);
}

String clsEncryptXOR::Encrypt(StringView text) const {
  if (key_.empty()) return {};
  return written(text.size(), [&](char16_t* place) {
    Cipher(key_).apply(storage(text), place);
    return text.size();
  });
}

String clsEncryptXOR::HexDecrypt(StringView digits) const {
  if (key_.empty()) return {};
  return written((digits.size() / 2 + 1) / 2, [&](char16_t* place) {
    const auto bytes = reinterpret_cast<std::uint8_t*>(place);
    std::size_t size = 0;
    Cipher cipher(key_);
    std::array<char16_t, 2 * block_size + 1> gathered;  // where blanks are in the way
    std::size_t kept = 0;                               // a digit without its partner, the first of them
    while (!digits.empty()) {
      StringView some = digits.substr(0, 2 * block_size);
      digits.remove_prefix(some.size());
      std::size_t pairs = kept == 0 ? hex::best().decode_units(some.data(), some.size() / 2, bytes + size) : 0;
      some.remove_prefix(2 * pairs);
      if (!some.empty()) {
        const auto end = std::remove_copy_if(some.begin(), some.end(), gathered.begin() + kept, is_blank);
        const auto count = static_cast<std::size_t>(end - gathered.begin());
        if (hex::best().decode_units(gathered.data(), count / 2, bytes + size + pairs) != count / 2) refuse();
        pairs += count / 2;
        kept = count % 2;
        if (kept != 0) gathered[0] = gathered[count - 1];
      }
      cipher.apply({bytes + size, pairs}, bytes + size);
      size += pairs;
    }
    if (kept != 0 && !is_digit(gathered[0])) refuse();
    if (size % 2 != 0) bytes[size++] = 0;
    return size / 2;
  });
}

String clsEncryptXOR::HexEncrypt(StringView text) const {
  if (key_.empty()) return {};
  ByteView bytes = storage(text);
  const std::size_t size = 2 * bytes.size();
  return written(size, [&](char16_t* place) {
    Cipher cipher(key_);
    std::array<std::uint8_t, block_size> block;
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(bytes.size(), block.size()))) {
      const ByteView some = bytes.first(std::min(bytes.size(), block.size()));
      cipher.apply(some, block.data());
      hex::best().encode_units(block.data(), some.size(), place);
      place += 2 * some.size();
    }
    return size;
  });
}

}  // namespace tornby
