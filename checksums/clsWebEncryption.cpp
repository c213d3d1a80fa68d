#include "checksums/clsWebEncryption.h"

#include <algorithm>
#include <array>

#include "base/code_run.h"
#include "base/runtime_error.h"
#include "base/written.h"
#include "checksums/base64/kernels.h"
#include "checksums/keyed_xor/kernels.h"

namespace tornby {
namespace {

constexpr std::size_t bytes_a_group = 3;
constexpr std::size_t digits_a_group = 4;

// Text passes through blocks of this many groups, which stay in the processor's nearest memory.
constexpr std::size_t groups_a_block = 1024;
constexpr std::size_t bytes_a_block = groups_a_block * bytes_a_group;
constexpr std::size_t digits_a_block = groups_a_block * digits_a_group;
using ByteBlock = std::array<std::uint8_t, bytes_a_block>;
using DigitBlock = std::array<std::uint8_t, digits_a_block>;

[[noreturn]] void refuse(StringView description) {
  throw RuntimeError(object_error_base, String(description));
}

void read_groups(const std::uint8_t* digits, std::size_t groups, std::uint8_t* bytes) {
  if (base64::best().decode(digits, groups, bytes) != groups) refuse(u"Illegal character.");
}

/// The number of digits, padding included.
std::size_t digits_for(std::size_t bytes) {
  return (bytes + bytes_a_group - 1) / bytes_a_group * digits_a_group;
}

/// The number of bytes that digits without their padding stand for.
std::size_t bytes_for(std::size_t digits) {
  return digits / digits_a_group * bytes_a_group + digits % digits_a_group * bytes_a_group / digits_a_group;
}

/// Writes the digits of all the bytes, padded, and returns how many.
std::size_t encode(ByteView bytes, std::uint8_t* digits) {
  const std::size_t groups = bytes.size() / bytes_a_group;
  base64::best().encode(bytes.data(), groups, digits);
  const ByteView rest = bytes.subspan(groups * bytes_a_group);
  if (!rest.empty()) {
    std::array<std::uint8_t, bytes_a_group> last = {};
    std::copy(rest.begin(), rest.end(), last.begin());
    std::uint8_t* const out = digits + groups * digits_a_group;
    base64::best().encode(last.data(), 1, out);
    std::fill(out + rest.size() + 1, out + digits_a_group, std::uint8_t{'='});
  }
  return digits_for(bytes.size());
}

/// Reads `size` digits, behind which their padding stands, and returns how many bytes they are.
std::size_t decode(const std::uint8_t* digits, std::size_t size, std::uint8_t* bytes) {
  const std::size_t groups = size / digits_a_group;
  const std::size_t rest = size % digits_a_group;
  read_groups(digits, groups, bytes);
  if (rest != 0) {
    // The second digit counts even where it is padding; the third and fourth may be missing.
    std::array<std::uint8_t, digits_a_group> last = {'A', 'A', 'A', 'A'};
    std::copy_n(digits + groups * digits_a_group, std::max<std::size_t>(rest, 2), last.begin());
    std::array<std::uint8_t, bytes_a_group> read;
    read_groups(last.data(), 1, read.data());
    std::copy_n(read.begin(), bytes_for(rest), bytes + groups * bytes_a_group);
  }
  return bytes_for(size);
}

/// The length of Base64 text without its padding.
template <class Text>
std::size_t without_padding(const Text& text) {
  if (text.size() % digits_a_group != 0) refuse(u"Length should be a multiple of 4.");
  std::size_t size = text.size();
  while (size > 0 && text[size - 1] == '=') --size;
  return size;
}

/// Hands the bytes that `text` stands for to `take`, block by block.
template <class Take>
void decode_by_blocks(StringView text, Take take) {
  DigitBlock digits;
  ByteBlock bytes;
  for (std::size_t size = without_padding(text); size != 0;) {
    const std::size_t some = std::min(size, digits_a_block);
    const StringView with_padding = text.substr(0, (some + digits_a_group - 1) / digits_a_group * digits_a_group);
    if (!narrow_ascii(with_padding, digits.data())) refuse(u"Illegal character.");
    take(std::span(bytes).first(decode(digits.data(), some, bytes.data())));
    text.remove_prefix(some);
    size -= some;
  }
}

/// Writes the digits of a block as characters, and returns how many.
std::size_t write_digits(ByteView bytes, char16_t* place) {
  DigitBlock digits;
  const std::size_t size = encode(bytes, digits.data());
  widen_bytes({digits.data(), size}, place);
  return size;
}

/// Hands a text or a block of bytes to `take` in pieces that become a block of digits each.
template <class Whole, class Take>
void for_each_block(Whole whole, Take take) {
  for (std::size_t at = 0; at < whole.size(); at += bytes_a_block)
    take(Whole(whole.data() + at, std::min(bytes_a_block, whole.size() - at)));
}

String digits_of(ByteView bytes) {
  return written(digits_for(bytes.size()), [&](char16_t* place) {
    std::size_t size = 0;
    for_each_block(bytes, [&](ByteView some) { size += write_digits(some, place + size); });
    return size;
  });
}

/// The key's bytes going round.
class Cipher {
 public:
  Cipher(const AnsiCodePage& code_page, StringView key) {
    if (key.size() * code_page.bytes_per_unit() <= short_key_.size())
      key_ = ByteView(short_key_.data(), code_page.encode(key, short_key_.data()));
    else
      key_ = long_key_ = code_page.encode(key);
    if (key_.empty()) throw RuntimeError(StandardError::division_by_zero);
  }
  Cipher(const Cipher&) = delete;
  Cipher& operator=(const Cipher&) = delete;

  void apply(std::span<std::uint8_t> bytes) {
    keyed_xor::apply(bytes.data(), bytes.data(), bytes.size(), key_.data(), key_.size(), phase_);
    phase_ = (phase_ + bytes.size()) % key_.size();
  }

 private:
  std::array<std::uint8_t, 64> short_key_;
  Bytes long_key_;
  ByteView key_;
  std::size_t phase_ = 0;
};

}  // namespace

String clsWebEncryption::Encrypt(String& text, StringView key) const {
  if (text.empty()) return {};
  Cipher cipher(*code_page_, key);
  if (code_page_->bytes_per_unit() != 1) {  // what becomes of a byte may depend on those around it
    Bytes bytes = code_page_->encode(text);
    cipher.apply(bytes);
    String result = digits_of(bytes);
    text = code_page_->decode(bytes);
    return result;
  }
  return written(digits_for(text.size()), [&](char16_t* place) {
    ByteBlock bytes;
    std::size_t size = 0;
    char16_t* changed = text.data();
    for_each_block(StringView(text), [&](StringView some) {
      const auto codes = std::span(bytes).first(code_page_->encode(some, bytes.data()));
      cipher.apply(codes);
      size += write_digits(codes, place + size);
      changed += code_page_->decode(codes, changed);
    });
    return size;
  });
}

String clsWebEncryption::Decrypt(String& text, StringView key) const {
  if (key.empty()) {
    if (!bsDecodeString(text).empty()) throw RuntimeError(StandardError::division_by_zero);
    text.clear();
    return {};
  }
  Cipher cipher(*code_page_, key);
  String result;
  if (code_page_->bytes_per_unit() != 1) {
    Bytes bytes;
    decode_by_blocks(text, [&](ByteView some) { bytes.insert(bytes.end(), some.begin(), some.end()); });
    cipher.apply(bytes);
    result = code_page_->decode(bytes);
  } else {
    result = written(bytes_for(text.size()), [&](char16_t* place) {
      std::size_t size = 0;
      decode_by_blocks(text, [&](std::span<std::uint8_t> some) {
        cipher.apply(some);
        size += code_page_->decode(some, place + size);
      });
      return size;
    });
  }
  text = result;
  return result;
}

Bytes clsWebEncryption::bsDecode(ByteView digits) const {
  std::size_t size = without_padding(digits);
  Bytes result;
  result.reserve(bytes_for(size));
  ByteBlock bytes;
  while (size != 0) {
    const std::size_t some = std::min(size, digits_a_block);
    result.insert(result.end(), bytes.data(), bytes.data() + decode(digits.data(), some, bytes.data()));
    digits = digits.subspan(some);
    size -= some;
  }
  return result;
}

String clsWebEncryption::bsDecodeString(StringView text) const {
  return written(bytes_for(text.size()), [&](char16_t* place) {
    std::size_t size = 0;
    decode_by_blocks(text, [&](ByteView some) {
      widen_bytes(some, place + size);
      size += some.size();
    });
    return size;
  });
}

String clsWebEncryption::bsEncodeString(StringView text) const {
  return written(digits_for(text.size()), [&](char16_t* place) {
    ByteBlock bytes;
    std::size_t size = 0;
    for_each_block(text, [&](StringView some) {
      code_page_->encode_each(some, bytes.data());
      size += write_digits({bytes.data(), some.size()}, place + size);
    });
    return size;
  });
}

Bytes clsWebEncryption::bsEncode(ByteView bytes) const {
  Bytes result;
  result.reserve(digits_for(bytes.size()));
  DigitBlock digits;
  for_each_block(bytes, [&](ByteView some) {
    result.insert(result.end(), digits.data(), digits.data() + encode(some, digits.data()));
  });
  return result;
}

Bytes clsWebEncryption::bsEncode2(ByteView bytes, std::int32_t count) const {
  if (count < 0 || static_cast<std::size_t>(count) > bytes.size())
    throw RuntimeError(StandardError::subscript_out_of_range);
  return bsEncode(bytes.first(static_cast<std::size_t>(count)));
}

}  // namespace tornby
