#include "checksums/clsEncryptXOR.h"

#include <algorithm>
#include <array>
#include <bit>

#include "base/runtime_error.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"

namespace tornby {
namespace {

// Text passes through blocks of this many bytes, so that nothing as long as the text is made but the result.
constexpr std::size_t block_size = 4096;

static_assert(std::endian::native == std::endian::little, "a string's storage has the low byte first");

ByteView storage(StringView text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size() * sizeof(char16_t)};
}

std::uint8_t* storage(String& text) {
  return reinterpret_cast<std::uint8_t*>(text.data());
}

/// The key going round: each block goes on where the one before stopped.
class Cipher {
 public:
  explicit Cipher(StringView key) : key_(storage(key)) {}

  void apply(std::span<std::uint8_t> bytes) {
    keyed_xor::apply(bytes.data(), bytes.size(), key_.data(), key_.size(), phase_);
    phase_ = (phase_ + bytes.size()) % key_.size();
  }

 private:
  ByteView key_;
  std::size_t phase_ = 0;
};

bool is_blank(char16_t character) {
  return character == u' ' || character == u'\t' || character == u'\r' || character == u'\n';
}

/// Moves digits from the front of `text` to `out` until that is full or the text ends; returns how many.
std::size_t take_digits(StringView& text, std::span<std::uint8_t> out) {
  std::size_t taken = 0;
  while (!text.empty() && taken < out.size()) {
    const char16_t character = text.front();
    text.remove_prefix(1);
    if (is_blank(character)) continue;
    if (character > 0x7F) throw RuntimeError(StandardError::type_mismatch);
    out[taken++] = static_cast<std::uint8_t>(character);
  }
  return taken;
}

void read_digits(std::uint8_t* digits, std::size_t pairs, std::uint8_t* bytes) {
  if (hex::best().decode(digits, pairs, bytes) != pairs) throw RuntimeError(StandardError::type_mismatch);
}

}  // namespace

String clsEncryptXOR::Decrypt(StringView text) const {
  return Encrypt(text);
}

String clsEncryptXOR::Encrypt(StringView text) const {
  if (key_.empty()) return {};
  String result(text);
  Cipher(key_).apply({storage(result), result.size() * sizeof(char16_t)});
  return result;
}

String clsEncryptXOR::HexDecrypt(StringView digits) const {
  if (key_.empty()) return {};
  Cipher cipher(key_);
  String result((digits.size() / 2 + 1) / 2, u'\0');
  std::uint8_t* const start = storage(result);
  std::size_t size = 0;
  std::array<std::uint8_t, 2 * block_size> block;
  while (!digits.empty()) {
    const std::size_t taken = take_digits(digits, block);
    read_digits(block.data(), taken / 2, start + size);
    cipher.apply({start + size, taken / 2});
    size += taken / 2;
    if (taken % 2 != 0) {  // only at the end, since the block's size is even
      std::array<std::uint8_t, 2> pair = {'0', block[taken - 1]};
      std::uint8_t ignored = 0;
      read_digits(pair.data(), 1, &ignored);
    }
  }
  result.resize((size + 1) / 2);
  return result;
}

String clsEncryptXOR::HexEncrypt(StringView text) const {
  if (key_.empty()) return {};
  Cipher cipher(key_);
  ByteView bytes = storage(text);
  String result(2 * bytes.size(), u'\0');
  auto out = result.begin();
  std::array<std::uint8_t, block_size> block;
  std::array<std::uint8_t, 2 * block_size> digits;
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), block.size());
    std::copy_n(bytes.begin(), size, block.begin());
    cipher.apply({block.data(), size});
    hex::best().encode(block.data(), size, digits.data());
    out = std::copy_n(digits.begin(), 2 * size, out);
    bytes = bytes.subspan(size);
  }
  return result;
}

}  // namespace tornby
