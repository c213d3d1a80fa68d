#include "checksums/clsEncryptXOR.h"

#include <algorithm>
#include <array>
#include <bit>

#include "base/code_run.h"
#include "base/runtime_error.h"
#include "base/written.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"

namespace tornby {
namespace {

// Text passes through blocks of this many bytes, which stay in the processor's nearest memory.
constexpr std::size_t block_size = 4096;
using Block = std::array<std::uint8_t, block_size>;
using Digits = std::array<std::uint8_t, 2 * block_size>;

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

bool is_blank(std::uint8_t character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

[[noreturn]] void refuse() {
  throw RuntimeError(StandardError::type_mismatch);
}

/// Reads the pairs of digits in `text`, which may hold blanks anywhere, and returns what is left behind the last pair:
/// nothing, a digit or a blank. The digits are moved together where blanks are in their way.
std::span<std::uint8_t> read_pairs(std::span<std::uint8_t> text, std::uint8_t* bytes, std::size_t& pairs) {
  pairs = hex::best().decode(text.data(), text.size() / 2, bytes);
  if (pairs < text.size() / 2) {
    const auto rest = text.subspan(2 * pairs);
    const auto end = std::remove_if(rest.begin(), rest.end(), is_blank);
    text = text.first(static_cast<std::size_t>(end - text.begin()));
    const std::size_t more = text.size() / 2 - pairs;
    if (hex::best().decode(rest.data(), more, bytes + pairs) != more) refuse();
    pairs += more;
  }
  return text.subspan(2 * pairs);
}

bool is_digit(std::uint8_t character) {
  const std::uint8_t pair[] = {'0', character};
  std::uint8_t ignored = 0;
  return hex::best().decode(pair, 1, &ignored) == 1;
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
    Digits block;
    std::size_t kept = 0;  // from the block before: a digit or a blank
    while (!digits.empty()) {
      const StringView some = digits.substr(0, block.size() - kept);
      if (!narrow_ascii(some, block.data() + kept)) refuse();
      digits.remove_prefix(some.size());

      std::size_t pairs = 0;
      const auto left = read_pairs(std::span(block).first(kept + some.size()), bytes + size, pairs);
      cipher.apply({bytes + size, pairs}, bytes + size);
      size += pairs;
      kept = left.size();
      if (!left.empty()) block[0] = left[0];
    }
    if (kept != 0 && !is_blank(block[0]) && !is_digit(block[0])) refuse();
    if (size % 2 != 0) bytes[size++] = 0;
    return size / 2;
  });
}

String clsEncryptXOR::HexEncrypt(StringView text) const {
  if (key_.empty()) return {};
  ByteView bytes = storage(text);
  return written(2 * bytes.size(), [&](char16_t* place) {
    const char16_t* const start = place;
    Cipher cipher(key_);
    Block block;
    Digits digits;
    while (!bytes.empty()) {
      const ByteView some = bytes.first(std::min(bytes.size(), block.size()));
      cipher.apply(some, block.data());
      hex::best().encode(block.data(), some.size(), digits.data());
      widen_bytes({digits.data(), 2 * some.size()}, place);
      place += 2 * some.size();
      bytes = bytes.subspan(some.size());
    }
    return static_cast<std::size_t>(place - start);
  });
}

}  // namespace tornby
