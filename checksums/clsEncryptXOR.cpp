#include "checksums/clsEncryptXOR.h"

#include <algorithm>
#include <array>
#include <bit>

#include "base/code_run.h"
#include "base/runtime_error.h"
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
  Cipher cipher(key_);
  String result;
  result.reserve(text.size());
  std::array<char16_t, block_size / sizeof(char16_t)> block;
  while (!text.empty()) {
    const StringView some = text.substr(0, block.size());
    cipher.apply(storage(some), block.data());
    result.append(block.data(), some.size());
    text.remove_prefix(some.size());
  }
  return result;
}

String clsEncryptXOR::HexDecrypt(StringView digits) const {
  if (key_.empty()) return {};
  Cipher cipher(key_);
  String result;
  result.reserve((digits.size() / 2 + 1) / 2);
  Digits block;
  std::array<char16_t, block_size / sizeof(char16_t) + 1> characters;
  std::size_t kept_digits = 0, kept_bytes = 0;  // from the block before: a digit or blank, and half a character
  const auto bytes = reinterpret_cast<std::uint8_t*>(characters.data());
  while (!digits.empty()) {
    const StringView some = digits.substr(0, block.size() - kept_digits);
    if (!narrow_ascii(some, block.data() + kept_digits)) refuse();
    digits.remove_prefix(some.size());

    std::size_t pairs = 0;
    const auto left = read_pairs(std::span(block).first(kept_digits + some.size()), bytes + kept_bytes, pairs);
    kept_digits = left.size();
    if (!left.empty()) block[0] = left[0];

    cipher.apply({bytes + kept_bytes, pairs}, bytes + kept_bytes);
    const std::size_t size = kept_bytes + pairs;
    result.append(characters.data(), size / 2);
    kept_bytes = size % 2;
    if (kept_bytes != 0) bytes[0] = bytes[size - 1];
  }
  if (kept_digits != 0 && !is_blank(block[0]) && !is_digit(block[0])) refuse();
  if (kept_bytes != 0) result += static_cast<char16_t>(bytes[0]);
  return result;
}

String clsEncryptXOR::HexEncrypt(StringView text) const {
  if (key_.empty()) return {};
  Cipher cipher(key_);
  ByteView bytes = storage(text);
  String result;
  result.reserve(2 * bytes.size());
  Block block;
  Digits digits;
  std::array<char16_t, 2 * block_size> characters;
  while (!bytes.empty()) {
    const ByteView some = bytes.first(std::min(bytes.size(), block.size()));
    cipher.apply(some, block.data());
    hex::best().encode(block.data(), some.size(), digits.data());
    widen_bytes({digits.data(), 2 * some.size()}, characters.data());
    result.append(characters.data(), 2 * some.size());
    bytes = bytes.subspan(some.size());
  }
  return result;
}

}  // namespace tornby
