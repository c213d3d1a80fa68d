// Hexadecimal, Base64 and the keyed XOR: the block kernels, and the members that give text or bytes. Sizes are those of
// the bytes that the form stands for, or of the characters. A member's peer is its kernels alone over as many bytes.
// They work from and to memory that is in use already; large ones also get, and touch, fresh memory of the size of the
// member's result.
#include <libbase64.h>

#include <memory>

#include "bench/measure.h"
#include "checksums/base64/kernels.h"
#include "checksums/clsEncryptXOR.h"
#include "checksums/clsWebEncryption.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"

#ifdef BENCH_OPENSSL
#include <openssl/evp.h>
#endif

namespace {

using namespace tornby;
using bench::short_lengths;

/// Some bytes, and room for any of their forms.
struct Blocks {
  Bytes bytes, digits;
};
Blocks blocks(std::size_t size) {
  return {bench::some_bytes(size), Bytes(2 * size + 4)};
}
Blocks hexadecimal(std::size_t size) {
  Blocks made = blocks(size);
  hex::best().encode(made.bytes.data(), size, made.digits.data());
  return made;
}
Blocks base64_digits(std::size_t size) {
  Blocks made = blocks(size);
  base64::best().encode(made.bytes.data(), size / 3, made.digits.data());
  return made;
}

template <class Make, class Step>
void add_kernel(const char* name, Make make, Step step) {
  bench::add(name, {short_lengths, 16, 64, 1024, 65'536, 1 << 20}, make, step);
}
template <class Make, class Step>
void add_member(const char* name, Make make, Step step) {
  bench::add(name, {16, 1024, 65'536, 1 << 20}, make, step);
}

void hex_encode(Blocks& b, std::size_t size) {
  hex::best().encode(b.bytes.data(), size, b.digits.data());
}
void hex_decode(Blocks& b, std::size_t size) {
  benchmark::DoNotOptimize(hex::best().decode(b.digits.data(), size, b.bytes.data()));
}
void base64_encode(Blocks& b, std::size_t size) {
  base64::best().encode(b.bytes.data(), size / 3, b.digits.data());
}
void base64_decode(Blocks& b, std::size_t size) {
  benchmark::DoNotOptimize(base64::best().decode(b.digits.data(), size / 3, b.bytes.data()));
}
template <std::size_t key_size>
void apply_key(Blocks& b, std::size_t size) {
  static const Bytes key(key_size, 0x5A);
  keyed_xor::apply(b.bytes.data(), b.bytes.data(), size, key.data(), key.size(), 0);
}

// The 256-bit code of Alfred Klomp's library.
void klomp_encode(Blocks& b, std::size_t size) {
  std::size_t written = 0;
  ::base64_encode(reinterpret_cast<const char*>(b.bytes.data()), size / 3 * 3, reinterpret_cast<char*>(b.digits.data()),
                  &written, BASE64_FORCE_AVX2);
}
void klomp_decode(Blocks& b, std::size_t size) {
  std::size_t written = 0;
  benchmark::DoNotOptimize(::base64_decode(reinterpret_cast<const char*>(b.digits.data()), size / 3 * 4,
                                           reinterpret_cast<char*>(b.bytes.data()), &written, BASE64_FORCE_AVX2));
}

void add_kernels() {
  add_kernel("to hexadecimal/Tornby", blocks, hex_encode);
  add_kernel("to hexadecimal/by table", blocks,
             [](Blocks& b, std::size_t size) { hex::encode_plain(b.bytes.data(), size, b.digits.data()); });
  add_kernel("from hexadecimal/Tornby", hexadecimal, hex_decode);
  add_kernel("from hexadecimal/by table", hexadecimal, [](Blocks& b, std::size_t size) {
    benchmark::DoNotOptimize(hex::decode_plain(b.digits.data(), size, b.bytes.data()));
  });
  add_kernel("to Base64/Tornby", blocks, base64_encode);
  add_kernel("to Base64/aklomp, 256 bits", blocks, klomp_encode);
  add_kernel("from Base64/Tornby", base64_digits, base64_decode);
  add_kernel("from Base64/aklomp, 256 bits", base64_digits, klomp_decode);
#ifdef BENCH_OPENSSL
  add_kernel("to Base64/OpenSSL", blocks, [](Blocks& b, std::size_t size) {
    ::EVP_EncodeBlock(b.digits.data(), b.bytes.data(), static_cast<int>(size / 3 * 3));
  });
  add_kernel("from Base64/OpenSSL", base64_digits, [](Blocks& b, std::size_t size) {
    benchmark::DoNotOptimize(::EVP_DecodeBlock(b.bytes.data(), b.digits.data(), static_cast<int>(size / 3 * 4)));
  });
#endif
  add_kernel("XOR, key of 16/Tornby", blocks, apply_key<16>);
  add_kernel("XOR, key of 16/by bytes", blocks, [](Blocks& b, std::size_t size) {
    static const Bytes key(16, 0x5A);
    for (std::size_t i = 0; i < size; ++i) b.bytes[i] ^= key[i % 16];
  });
}

const clsEncryptXOR& cipher() {
  static const clsEncryptXOR object;
  return object;
}
const clsWebEncryption& web() {
  static const clsWebEncryption object;
  return object;
}
constexpr StringView key = u"secret";

/// As many characters as the bytes that they are stored in.
String stored_text(std::size_t size) {
  return bench::some_text(size / 2);
}
String ascii(std::size_t size) {
  return bench::some_text(size);
}
String letters(std::size_t size) {
  return bench::some_text(size, 30);
}
String signs(std::size_t size) {
  return bench::some_text(size, 30, u'\u20AC');
}

void touch_fresh_memory(std::size_t size) {
  constexpr std::size_t large = 1 << 16, page = 4096;
  if (size < large) return;
  const std::unique_ptr<std::uint8_t[]> memory(new std::uint8_t[size]);
  for (std::size_t at = 0; at < size; at += page) memory[at] = 0;
  benchmark::DoNotOptimize(memory.get());
}

void add_members() {
  add_member("HexEncrypt/Tornby", stored_text,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(cipher().HexEncrypt(text).data()); });
  add_member("HexEncrypt/its kernels alone", blocks, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(4 * size);
    apply_key<16>(b, size);
    hex_encode(b, size);
  });
  add_member(
      "HexDecrypt/Tornby", [](std::size_t size) { return cipher().HexEncrypt(stored_text(size)); },
      [](const String& text, std::size_t) { benchmark::DoNotOptimize(cipher().HexDecrypt(text).data()); });
  add_member("HexDecrypt/its kernels alone", hexadecimal, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(size);
    hex_decode(b, size);
    apply_key<16>(b, size);
  });
  add_member("clsEncryptXOR Encrypt/Tornby", stored_text,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(cipher().Encrypt(text).data()); });
  add_member("clsEncryptXOR Encrypt/its kernels alone", blocks, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(size);
    apply_key<16>(b, size);
  });
  add_member("bsEncode/Tornby", bench::some_bytes,
             [](const Bytes& bytes, std::size_t) { benchmark::DoNotOptimize(web().bsEncode(bytes).data()); });
  add_member("bsEncode/its kernels alone", blocks, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(4 * size / 3);
    base64_encode(b, size);
  });
  add_member(
      "bsDecode/Tornby", [](std::size_t size) { return web().bsEncode(bench::some_bytes(size)); },
      [](const Bytes& digits, std::size_t) { benchmark::DoNotOptimize(web().bsDecode(digits).data()); });
  add_member("bsDecode/its kernels alone", base64_digits, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(size);
    base64_decode(b, size);
  });
  add_member("bsEncodeString/Tornby", ascii,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsEncodeString(text).data()); });
  add_member("bsEncodeString/its kernels alone", blocks, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(8 * size / 3);
    base64_encode(b, size);
  });
  add_member("bsEncodeString, accents/Tornby", letters,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsEncodeString(text).data()); });
  add_member("bsEncodeString, accents/its kernels alone", blocks, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(8 * size / 3);
    base64_encode(b, size);
  });
  add_member("bsEncodeString, signs/Tornby", signs,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsEncodeString(text).data()); });
  add_member("bsEncodeString, signs/its kernels alone", blocks, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(8 * size / 3);
    base64_encode(b, size);
  });
  add_member(
      "bsDecodeString/Tornby", [](std::size_t size) { return web().bsEncodeString(ascii(size)); },
      [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsDecodeString(text).data()); });
  add_member("bsDecodeString/its kernels alone", base64_digits, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(2 * size);
    base64_decode(b, size);
  });
  struct Texts {
    String given, changed;
  };
  add_member("clsWebEncryption Encrypt/Tornby", ascii, [](String& text, std::size_t) {
    benchmark::DoNotOptimize(web().Encrypt(text, key).data());  // again and again, there and back
  });
  add_member("clsWebEncryption Encrypt/its kernels alone", blocks, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(8 * size / 3);
    apply_key<6>(b, size);
    base64_encode(b, size);
  });
  add_member(
      "clsWebEncryption Decrypt/Tornby",
      [](std::size_t size) {
        String text = ascii(size);
        return Texts{web().Encrypt(text, key), {}};
      },
      [](Texts& texts, std::size_t) {
        texts.changed = texts.given;
        benchmark::DoNotOptimize(web().Decrypt(texts.changed, key).data());
      });
  add_member("clsWebEncryption Decrypt/its kernels alone", base64_digits, [](Blocks& b, std::size_t size) {
    touch_fresh_memory(2 * size);
    base64_decode(b, size);
    apply_key<6>(b, size);
  });
}

const bool added = [] {
  add_kernels();
  add_members();
  return true;
}();

}  // namespace
