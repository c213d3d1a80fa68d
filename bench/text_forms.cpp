// Hexadecimal, Base64 and the keyed XOR from 64 bytes to 1 MiB, beside OpenSSL's Base64 and a copy of the same bytes;
// and a whole text file up to 256 MiB, beside a plain read. Names are group/who/size, the size being that of the bytes
// that the form stands for; the first of a group is what the others are compared with.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "checksums/base64/kernels.h"
#include "checksums/clsApi.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"

#ifdef BENCH_OPENSSL
#include <openssl/evp.h>
#endif

namespace {

using namespace tornby;

/// What one step works on: `size` bytes, and room for any of their forms.
struct Blocks {
  std::size_t size;
  std::vector<std::uint8_t> bytes, digits;
};
using Step = void (*)(Blocks&);

void run(benchmark::State& state, Step prepare, Step step) {
  const auto size = static_cast<std::size_t>(state.range(0)) / 3 * 3;
  Blocks blocks{size, Bytes(size), Bytes(2 * size)};
  for (std::size_t i = 0; i < size; ++i) blocks.bytes[i] = static_cast<std::uint8_t>(i * 131 >> 3);
  prepare(blocks);
  for (auto _ : state) {
    step(blocks);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

void add(
    const char* name, Step step, Step prepare = [](Blocks&) {}) {
  auto* entry = benchmark::RegisterBenchmark(name, [=](benchmark::State& state) { run(state, prepare, step); });
  for (const std::int64_t size : {64, 1024, 16'384, 1'048'576}) entry->Arg(size);
}

void copy(Blocks& b) {
  std::memcpy(b.digits.data(), b.bytes.data(), b.size);
}

const Codec& hex_plain() {
  return hex::kernels().back();
}
const Codec& base64_plain() {
  return base64::kernels().back();
}

template <const Codec& (*kernel)()>
void hex_encode(Blocks& b) {
  kernel().encode(b.bytes.data(), b.size, b.digits.data());
}
template <const Codec& (*kernel)()>
void hex_decode(Blocks& b) {
  benchmark::DoNotOptimize(kernel().decode(b.digits.data(), b.size, b.bytes.data()));
}
template <const Codec& (*kernel)()>
void base64_encode(Blocks& b) {
  kernel().encode(b.bytes.data(), b.size / 3, b.digits.data());
}
template <const Codec& (*kernel)()>
void base64_decode(Blocks& b) {
  benchmark::DoNotOptimize(kernel().decode(b.digits.data(), b.size / 3, b.bytes.data()));
}
template <keyed_xor::Apply apply, std::size_t key_size>
void keyed_xor_by(Blocks& b) {
  static const Bytes key(key_size, 0x5A);
  apply(b.bytes.data(), b.bytes.data(), b.size, key.data(), key.size(), 0);
}

#ifdef BENCH_OPENSSL
void openssl_encode(Blocks& b) {
  ::EVP_EncodeBlock(b.digits.data(), b.bytes.data(), static_cast<int>(b.size));
}
void openssl_decode(Blocks& b) {
  benchmark::DoNotOptimize(::EVP_DecodeBlock(b.bytes.data(), b.digits.data(), static_cast<int>(b.size / 3 * 4)));
}
#endif

/// A file of that size, made when first asked for and removed at the end.
const std::filesystem::path& file_of(std::uintmax_t size) {
  struct File {
    std::filesystem::path path;
    std::uintmax_t size = 0;
    ~File() {
      std::error_code ignored;
      std::filesystem::remove(path, ignored);
    }
  };
  static File file{std::filesystem::temp_directory_path() / "tornby_bench.txt"};
  if (file.size != size) {
    std::FILE* out = std::fopen(file.path.string().c_str(), "wb");
    const std::vector<char> block(1 << 16, 'x');
    for (std::uintmax_t left = size; left != 0; left -= block.size()) std::fwrite(block.data(), 1, block.size(), out);
    std::fclose(out);
    file.size = size;
  }
  return file.path;
}

void plain_read(const std::filesystem::path& path, std::size_t size) {
  std::vector<char> bytes(size);
  std::FILE* in = std::fopen(path.string().c_str(), "rb");
  benchmark::DoNotOptimize(std::fread(bytes.data(), 1, size, in));
  std::fclose(in);
  benchmark::DoNotOptimize(bytes.data());
}
void plain_read_as_text(const std::filesystem::path& path, std::size_t size) {
  Bytes bytes(size);
  std::FILE* in = std::fopen(path.string().c_str(), "rb");
  benchmark::DoNotOptimize(std::fread(bytes.data(), 1, size, in));
  std::fclose(in);
  benchmark::DoNotOptimize(String(bytes.begin(), bytes.end()).data());
}
void api_read(const std::filesystem::path& path, std::size_t) {
  benchmark::DoNotOptimize(clsApi().ApiReadFile(path.u16string()).size());
}

void add_read(const char* name, void (*read)(const std::filesystem::path&, std::size_t)) {
  auto* entry = benchmark::RegisterBenchmark(name, [=](benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    const auto& path = file_of(size);
    for (auto _ : state) read(path, size);
    state.SetBytesProcessed(state.iterations() * state.range(0));
  });
  for (const std::int64_t size : {1 << 16, 1 << 20, 1 << 24, 1 << 28}) entry->Arg(size);
  entry->UseRealTime();
}

const bool added = [] {
  add("hex encode/plain", hex_encode<hex_plain>);
  add("hex encode/best", hex_encode<hex::best>);
  add("hex encode/memcpy", copy);
  add("hex decode/plain", hex_decode<hex_plain>, hex_encode<hex_plain>);
  add("hex decode/best", hex_decode<hex::best>, hex_encode<hex_plain>);
  add("hex decode/memcpy", copy);
  add("base64 encode/plain", base64_encode<base64_plain>);
  add("base64 encode/best", base64_encode<base64::best>);
#ifdef BENCH_OPENSSL
  add("base64 encode/OpenSSL", openssl_encode);
#endif
  add("base64 encode/memcpy", copy);
  add("base64 decode/plain", base64_decode<base64_plain>, base64_encode<base64_plain>);
  add("base64 decode/best", base64_decode<base64::best>, base64_encode<base64_plain>);
#ifdef BENCH_OPENSSL
  add("base64 decode/OpenSSL", openssl_decode, base64_encode<base64_plain>);
#endif
  add("base64 decode/memcpy", copy);
  add("xor, key of 16/plain", keyed_xor_by<keyed_xor::apply_plain, 16>);
  add("xor, key of 16/best", keyed_xor_by<keyed_xor::apply, 16>);
  add("xor, key of 16/memcpy", copy);
  add("xor, key of 5/plain", keyed_xor_by<keyed_xor::apply_plain, 5>);
  add("xor, key of 5/best", keyed_xor_by<keyed_xor::apply, 5>);
  add("xor, key of 5/memcpy", copy);
  add_read("read/fread", plain_read);
  add_read("read/fread to a string", plain_read_as_text);
  add_read("read/ApiReadFile", api_read);
  return true;
}();

}  // namespace
