#include "checksums/clsWebEncryption.h"

#include <algorithm>
#include <array>

#include "base/runtime_error.h"
#include "checksums/base64/kernels.h"
#include "checksums/keyed_xor/kernels.h"

namespace tornby {
namespace {

constexpr std::size_t bytes_a_group = 3;
constexpr std::size_t digits_a_group = 4;

[[noreturn]] void refuse(StringView description) {
  throw RuntimeError(object_error_base, String(description));
}

/// One character a byte, whose UTF-16 value is the byte.
String widened(ByteView bytes) {
  return String(bytes.begin(), bytes.end());
}

void read_digits(const std::uint8_t* digits, std::size_t groups, std::uint8_t* bytes) {
  if (base64::best().decode(digits, groups, bytes) != groups) refuse(u"Illegal character.");
}

}  // namespace

String clsWebEncryption::Encrypt(String& text, StringView key) const {
  if (text.empty()) return {};
  Bytes bytes = code_page_->encode(text);
  apply_key(bytes, key);
  String result = widened(bsEncode(bytes));
  text = code_page_->decode(bytes);
  return result;
}

String clsWebEncryption::Decrypt(String& text, StringView key) const {
  Bytes bytes = bsDecode(codes(text));
  if (!bytes.empty()) apply_key(bytes, key);
  text = code_page_->decode(bytes);
  return text;
}

Bytes clsWebEncryption::bsDecode(ByteView digits) const {
  if (digits.size() % digits_a_group != 0) refuse(u"Length should be a multiple of 4.");
  std::size_t size = digits.size();
  while (size > 0 && digits[size - 1] == '=') --size;
  const std::size_t groups = size / digits_a_group;
  const std::size_t rest = size % digits_a_group;

  Bytes bytes(size * bytes_a_group / digits_a_group);
  read_digits(digits.data(), groups, bytes.data());
  if (rest != 0) {
    // The second digit counts even where it is padding; the third and fourth may be missing.
    std::array<std::uint8_t, digits_a_group> last = {'A', 'A', 'A', 'A'};
    std::copy_n(digits.begin() + static_cast<std::ptrdiff_t>(groups * digits_a_group), std::max<std::size_t>(rest, 2),
                last.begin());
    std::array<std::uint8_t, bytes_a_group> read;
    read_digits(last.data(), 1, read.data());
    std::copy_n(read.begin(), bytes.size() - groups * bytes_a_group,
                bytes.begin() + static_cast<std::ptrdiff_t>(groups * bytes_a_group));
  }
  return bytes;
}

String clsWebEncryption::bsDecodeString(StringView text) const {
  return widened(bsDecode(codes(text)));
}

String clsWebEncryption::bsEncodeString(StringView text) const {
  return widened(bsEncode(codes(text)));
}

Bytes clsWebEncryption::bsEncode(ByteView bytes) const {
  const std::size_t groups = bytes.size() / bytes_a_group;
  const ByteView rest = bytes.subspan(groups * bytes_a_group);
  Bytes digits((groups + (rest.empty() ? 0 : 1)) * digits_a_group, std::uint8_t{'='});
  base64::best().encode(bytes.data(), groups, digits.data());
  if (!rest.empty()) {
    std::array<std::uint8_t, bytes_a_group> last = {};
    std::copy(rest.begin(), rest.end(), last.begin());
    std::array<std::uint8_t, digits_a_group> written;
    base64::best().encode(last.data(), 1, written.data());
    std::copy_n(written.begin(), rest.size() + 1,
                digits.begin() + static_cast<std::ptrdiff_t>(groups * digits_a_group));
  }
  return digits;
}

Bytes clsWebEncryption::bsEncode2(ByteView bytes, std::int32_t count) const {
  if (count < 0 || static_cast<std::size_t>(count) > bytes.size())
    throw RuntimeError(StandardError::subscript_out_of_range);
  return bsEncode(bytes.first(static_cast<std::size_t>(count)));
}

/// One byte a character, as bsEncodeString describes it. The code page's substitutes do not count: a character has a
/// code only if the code stands for that character.
Bytes clsWebEncryption::codes(StringView text) const {
  Bytes bytes(text.size());
  std::transform(text.begin(), text.end(), bytes.begin(), [this](char16_t character) {
    if (character < 0x80) return static_cast<std::uint8_t>(character);  // ASCII in every ANSI code page
    const unsigned code = code_page_->code_of(character);
    const auto byte = static_cast<std::uint8_t>(code);
    std::array<char16_t, 1> back;
    if (code < 0x100 && code_page_->decode(ByteView(&byte, 1), back.data()) == 1 && back[0] == character) return byte;
    return static_cast<std::uint8_t>(character < 0x100 ? character : u'?');
  });
  return bytes;
}

void clsWebEncryption::apply_key(Bytes& bytes, StringView key) const {
  if (key.empty()) throw RuntimeError(StandardError::division_by_zero);
  const Bytes key_bytes = code_page_->encode(key);
  keyed_xor::apply(bytes.data(), bytes.size(), key_bytes.data(), key_bytes.size(), 0);
}

}  // namespace tornby
