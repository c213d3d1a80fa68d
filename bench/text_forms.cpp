// Hexadecimal, Base64 and the keyed XOR: the block kernels, and the members that give text or bytes. Sizes are those of
// the bytes that the form stands for, or of the characters. A member's peer is its kernels alone over as many bytes:
// small results go to memory that is in use already, large ones to fresh memory of the size of the member's result.
// What that memory costs by itself, asked for and given back, stands beside it.
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

/// Some bytes, their form, and room for any form of them.
struct Blocks {
  Bytes bytes, digits, room;
  String text = {}, copy = {};
};
Blocks blocks(std::size_t size) {
  return {bench::some_bytes(size), Bytes(2 * size + 4), Bytes(2 * size + 4)};
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
void apply_key(const std::uint8_t* from, std::size_t size, std::uint8_t* to) {
  static const Bytes key(key_size, 0x5A);
  keyed_xor::apply(from, to, size, key.data(), key.size(), 0);
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
  add_kernel("XOR, key of 16/Tornby", blocks,
             [](Blocks& b, std::size_t size) { apply_key<16>(b.bytes.data(), size, b.bytes.data()); });
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

/// Memory of a result: fresh, and every page of it touched, if it is large.
class Room {
 public:
  Room(Bytes& in_use, std::size_t size) : place_(in_use.data()) {
    constexpr std::size_t large = 1 << 16, page = 4096;
    if (size < large) return;
    fresh_.reset(new std::uint8_t[size]);
    place_ = fresh_.get();
    for (std::size_t at = 0; at < size; at += page) place_[at] = 0;
    benchmark::DoNotOptimize(place_);
  }
  std::uint8_t* place() const { return place_; }

 private:
  std::unique_ptr<std::uint8_t[]> fresh_;
  std::uint8_t* place_;
};

/// The text to decipher, too.
Blocks enciphered(std::size_t size) {
  Blocks made = base64_digits(size);
  String text = ascii(size);
  made.text = web().Encrypt(text, key);
  return made;
}

void encode_alone(Blocks& b, std::size_t size, std::uint8_t* room) {
  base64::best().encode(b.bytes.data(), size / 3, room);
}
void decode_alone(Blocks& b, std::size_t size, std::uint8_t* room) {
  benchmark::DoNotOptimize(base64::best().decode(b.digits.data(), size / 3, room));
}

/// What stands beside a member whose result has so many bytes for each three of the size: `step` puts as much there.
template <class Make, class Step>
void add_alone(const std::string& member, std::size_t bytes_for_three, Make make, Step step) {
  const auto result_size = [=](std::size_t size) { return size * bytes_for_three / 3; };
  add_member((member + "/its kernels alone").c_str(), make, [=](Blocks& b, std::size_t size) {
    const Room room(b.room, result_size(size));
    step(b, size, room.place());
  });
  add_member((member + "/its memory alone").c_str(), [](std::size_t) { return 0; },
             [=](int, std::size_t size) {
               Bytes memory;
               memory.reserve(result_size(size));
               benchmark::DoNotOptimize(memory.data());
             });
}

void add_members() {
  add_member("HexEncrypt/Tornby", stored_text,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(cipher().HexEncrypt(text).data()); });
  add_alone("HexEncrypt", 12, blocks, [](Blocks& b, std::size_t size, std::uint8_t* room) {
    apply_key<16>(b.bytes.data(), size, b.bytes.data());
    hex::best().encode(b.bytes.data(), size, room);
  });
  add_member(
      "HexDecrypt/Tornby", [](std::size_t size) { return cipher().HexEncrypt(stored_text(size)); },
      [](const String& text, std::size_t) { benchmark::DoNotOptimize(cipher().HexDecrypt(text).data()); });
  add_alone("HexDecrypt", 3, hexadecimal, [](Blocks& b, std::size_t size, std::uint8_t* room) {
    benchmark::DoNotOptimize(hex::best().decode(b.digits.data(), size, room));
    apply_key<16>(room, size, room);
  });
  add_member("clsEncryptXOR Encrypt/Tornby", stored_text,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(cipher().Encrypt(text).data()); });
  add_alone("clsEncryptXOR Encrypt", 3, blocks,
            [](Blocks& b, std::size_t size, std::uint8_t* room) { apply_key<16>(b.bytes.data(), size, room); });
  add_member("bsEncode/Tornby", bench::some_bytes,
             [](const Bytes& bytes, std::size_t) { benchmark::DoNotOptimize(web().bsEncode(bytes).data()); });
  add_alone("bsEncode", 4, blocks, encode_alone);
  add_member(
      "bsDecode/Tornby", [](std::size_t size) { return web().bsEncode(bench::some_bytes(size)); },
      [](const Bytes& digits, std::size_t) { benchmark::DoNotOptimize(web().bsDecode(digits).data()); });
  add_alone("bsDecode", 3, base64_digits, decode_alone);
  add_member("bsEncodeString/Tornby", ascii,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsEncodeString(text).data()); });
  add_alone("bsEncodeString", 8, blocks, encode_alone);
  add_member("bsEncodeString, accents/Tornby", letters,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsEncodeString(text).data()); });
  add_alone("bsEncodeString, accents", 8, blocks, encode_alone);
  add_member("bsEncodeString, signs/Tornby", signs,
             [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsEncodeString(text).data()); });
  add_alone("bsEncodeString, signs", 8, blocks, encode_alone);
  add_member(
      "bsDecodeString/Tornby", [](std::size_t size) { return web().bsEncodeString(ascii(size)); },
      [](const String& text, std::size_t) { benchmark::DoNotOptimize(web().bsDecodeString(text).data()); });
  add_alone("bsDecodeString", 6, base64_digits, decode_alone);
  add_member("clsWebEncryption Encrypt/Tornby", ascii, [](String& text, std::size_t) {
    benchmark::DoNotOptimize(web().Encrypt(text, key).data());  // again and again, there and back
  });
  add_alone("clsWebEncryption Encrypt", 8, blocks, [](Blocks& b, std::size_t size, std::uint8_t* room) {
    apply_key<6>(b.bytes.data(), size, b.bytes.data());
    base64::best().encode(b.bytes.data(), size / 3, room);
  });
  add_member("clsWebEncryption Decrypt/Tornby", enciphered, [](Blocks& b, std::size_t) {
    b.copy = b.text;  // which the member changes
    benchmark::DoNotOptimize(web().Decrypt(b.copy, key).data());
  });
  add_alone("clsWebEncryption Decrypt", 6, enciphered, [](Blocks& b, std::size_t size, std::uint8_t* room) {
    b.copy = b.text;
    benchmark::DoNotOptimize(base64::best().decode(b.digits.data(), size / 3, room));
    apply_key<6>(room, size, room);
  });
}

const bool added = [] {
  add_kernels();
  add_members();
  return true;
}();

}  // namespace
