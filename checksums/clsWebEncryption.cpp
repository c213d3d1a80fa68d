#include "checksums/clsWebEncryption.h"

#include <algorithm>
#include <array>

#include "base/code_map.h"
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

[[noreturn]] void refuse(StringView description) {
  throw RuntimeError(object_error_base, String(description));
}

/// The kernels for digits that are bytes and for those that are units.
void write_groups(const std::uint8_t* bytes, std::size_t groups, std::uint8_t* digits) {
  base64::best().encode(bytes, groups, digits);
}
void write_groups(const std::uint8_t* bytes, std::size_t groups, char16_t* digits) {
  base64::best().encode_units(bytes, groups, digits);
}
std::size_t read_groups(const std::uint8_t* digits, std::size_t groups, std::uint8_t* bytes) {
  return base64::best().decode(digits, groups, bytes);
}
std::size_t read_groups(const char16_t* digits, std::size_t groups, std::uint8_t* bytes) {
  return base64::best().decode_units(digits, groups, bytes);
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
template <class Digit>
std::size_t encode(ByteView bytes, Digit* digits) {
  const std::size_t groups = bytes.size() / bytes_a_group;
  write_groups(bytes.data(), groups, digits);
  if (const ByteView rest = bytes.subspan(groups * bytes_a_group); !rest.empty()) {
    const std::uint8_t last[] = {rest[0], rest.size() == 2 ? rest[1] : std::uint8_t{0}, 0};
    Digit* const out = digits + groups * digits_a_group;
    base64::encode_plain(last, 1, out);
    if (rest.size() == 1) out[2] = '=';
    out[3] = '=';
  }
  return digits_for(bytes.size());
}

/// Reads `size` digits, behind which their padding stands, and returns how many bytes they are.
template <class Digit>
std::size_t decode(const Digit* digits, std::size_t size, std::uint8_t* bytes) {
  const std::size_t groups = size / digits_a_group;
  const std::size_t rest = size % digits_a_group;
  bool legal = read_groups(digits, groups, bytes) == groups;
  if (rest != 0) {
    // The second digit counts even where it is padding; the third and fourth may be missing.
    const Digit* const end = digits + groups * digits_a_group;
    const Digit last[] = {end[0], end[1], rest == 3 ? end[2] : Digit{'A'}, Digit{'A'}};
    std::uint8_t read[bytes_a_group] = {};
    legal = legal && base64::decode_plain(last, 1, read) == 1;
    bytes[groups * bytes_a_group] = read[0];
    if (rest == 3) bytes[groups * bytes_a_group + 1] = read[1];
  }
  if (!legal) refuse(u"Illegal character.");
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
  ByteBlock bytes;
  for (std::size_t size = without_padding(text); size != 0;) {
    const std::size_t some = std::min(size, digits_a_block);
    take(std::span(bytes).first(decode(text.data(), some, bytes.data())));
    text.remove_prefix(some);
    size -= some;
  }
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
    for_each_block(bytes, [&](ByteView some) { size += encode(some, place + size); });
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
      size += encode(codes, place + size);
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
      size += encode({bytes.data(), some.size()}, place + size);
    });
    return size;
  });
}

Bytes clsWebEncryption::bsEncode(ByteView bytes) const {
  Bytes result;
  result.reserve(digits_for(bytes.size()));
  std::array<std::uint8_t, digits_a_block> digits;
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
