// A 32-bit program may call with its stack on any boundary of four bytes. Every member and every kernel is called so,
// and gives what it gives otherwise; a vector that was stored on the stack as if it were aligned is a crash.
#include <gtest/gtest.h>

#include <array>

#include "base/code_map.h"
#include "checksums/base64/kernels.h"
#include "checksums/clsCRC.h"
#include "checksums/clsEncryptXOR.h"
#include "checksums/clsWebEncryption.h"
#include "checksums/crc/kernels.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"
#include "support/kernels.h"

// void call_below(function, argument, distance): calls with the stack that far below a boundary of 64 bytes.
asm(R"(
.text
_call_below:
  pushl %ebp
  movl %esp, %ebp
  andl $-64, %esp
  subl 16(%ebp), %esp
  pushl 12(%ebp)
  call *8(%ebp)
  movl %ebp, %esp
  popl %ebp
  ret
)");
extern "C" void call_below(void (*function)(void*), void* argument, unsigned distance);

namespace tornby {
namespace {

/// Calls a function with the stack on each boundary, and compares what it returns.
template <class Function>
void on_every_boundary(Function function) {
  using Result = decltype(function());
  struct Call {
    Function& function;
    Result result;
  };
  const Result expected = function();
  for (unsigned distance = 0; distance < 64; distance += 4) {
    Call call{function, {}};
    call_below([](void* argument) { static_cast<Call*>(argument)->result = static_cast<Call*>(argument)->function(); },
               &call, distance);
    ASSERT_EQ(call.result, expected) << distance;
  }
}

constexpr std::size_t size = 999;  // whole blocks of every kernel, and a rest
using Room = std::array<std::uint8_t, 2 * size>;

TEST(MisalignedCallers, GetTheSameFromEveryKernel) {
  Room in{};
  for (std::size_t i = 0; i < in.size(); ++i) in[i] = static_cast<std::uint8_t>(i * 131 >> 3);
  testing::with_each(crc::kernels(), [&](const crc::Kernel& kernel) {
    on_every_boundary(
        [&] { return std::pair(kernel.update_crc16(1, in.data(), size), kernel.update_crc32(1, in.data(), size)); });
  });
  testing::with_each(keyed_xor::kernels(), [&](const keyed_xor::Kernel& kernel) {
    for (const std::size_t key_size : {5u, 16u, 33u})
      on_every_boundary([&] {
        Room out{};
        kernel.apply(in.data(), out.data(), size, in.data() + 100, key_size, 3);
        return out;
      });
  });
  const auto of_codec = [&](std::size_t bytes_a_group) {
    return [&, groups = size / bytes_a_group](const Codec& kernel) {
      on_every_boundary([&] {
        Room digits{}, out{};
        kernel.encode(in.data(), groups, digits.data());
        out.back() = kernel.decode(digits.data(), groups, out.data()) == groups;
        std::array<char16_t, 2 * size> units{};
        kernel.encode_units(out.data(), groups, units.data());
        return std::tuple(digits, out, units, kernel.decode_units(units.data(), groups, out.data()));
      });
    };
  };
  testing::with_each(hex::kernels(), of_codec(1));
  testing::with_each(base64::kernels(), of_codec(3));
  Characters characters{};
  UnitCodes unit_codes(0x10000);
  for (unsigned code = 0; code < characters.size(); ++code) {
    characters[code] = static_cast<char16_t>(code);
    unit_codes[code] = static_cast<std::uint8_t>(code);
  }
  const CodeRun run{0x80, 0x80, 0x80};
  const CodeMap map(characters, unit_codes, run);
  const CharacterMap character_map(characters, run);
  testing::with_each(code_map_kernels(), [&](const CodeMapKernel& kernel) {
    on_every_boundary([&] {
      std::array<char16_t, size> units, back{};
      for (std::size_t i = 0; i < size; ++i) units[i] = static_cast<char16_t>(i % 0x80 + (i % 3 == 0 ? 0x80 : 0));
      Room codes{};
      kernel.narrow(units.data(), size, codes.data(), &map);
      kernel.widen(codes.data(), size, back.data(), character_map);
      return std::pair(codes, back);
    });
  });
}

TEST(MisalignedCallers, GetTheSameFromEveryMember) {
  String text;
  for (char16_t i = 0; i < 5000; ++i) text += static_cast<char16_t>(i % 300 + 1);
  for (const std::int32_t algorithm : {0, 1})
    on_every_boundary([&] {
      clsCRC crc;
      crc.Algorithm(algorithm);
      return std::pair(crc.AddString(text), crc.CalculateString(text));
    });
  on_every_boundary([&] { return clsCRC().WIN64_AddCrc32(text, -1); });
  const clsEncryptXOR cipher;
  on_every_boundary([&] { return cipher.Encrypt(text); });
  on_every_boundary([&] { return cipher.HexDecrypt(cipher.HexEncrypt(text)); });
  const clsWebEncryption web;
  on_every_boundary([&] { return web.bsDecodeString(web.bsEncodeString(text)); });
  on_every_boundary([&] { return web.bsDecode(web.bsEncode(Bytes(text.begin(), text.end()))); });
  on_every_boundary([&] {
    String enciphered = text, digits = web.Encrypt(enciphered, u"key");
    return web.Decrypt(digits, u"key");
  });
}

}  // namespace
}  // namespace tornby
