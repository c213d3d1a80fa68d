// Checksums from 16 bytes to 64 MiB. Names are group/who/size; the first of a group is what the others are compared
// with.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "checksums/crc/kernels.h"

#ifndef _WIN32
#include <libdeflate.h>
#include <zlib.h>
#endif

namespace {

using namespace tornby::crc;

template <class Update>
void run(benchmark::State& state, Update update) {
  const auto size = static_cast<std::size_t>(state.range(0));
  std::vector<std::uint8_t> bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 131 >> 3);
  for (auto _ : state) benchmark::DoNotOptimize(update(bytes.data(), size));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

template <class Update>
void add(const char* name, Update update) {
  auto* entry = benchmark::RegisterBenchmark(name, [update](benchmark::State& state) { run(state, update); });
  for (const std::int64_t size : {16, 64, 256, 1024, 4096, 65'536, 1'048'576, 16'777'216, 67'108'864}) entry->Arg(size);
}

const bool added = [] {
  using Data = const std::uint8_t*;
  add("crc32/bytewise", [](Data data, std::size_t size) { return update_crc32_bytewise(0, data, size); });
  add("crc32/best", [](Data data, std::size_t size) { return update_crc32(0, data, size); });
  add("crc32/sliced", [](Data data, std::size_t size) { return update_crc32_sliced(0, data, size); });
#ifndef _WIN32
  add("crc32/zlib", [](Data data, std::size_t size) { return crc32_z(0, data, size); });
  add("crc32/libdeflate", [](Data data, std::size_t size) { return libdeflate_crc32(0, data, size); });
#endif
  add("crc16/bytewise", [](Data data, std::size_t size) { return update_crc16_bytewise(0, data, size); });
  add("crc16/sliced", [](Data data, std::size_t size) { return update_crc16_sliced(0, data, size); });
  return true;
}();

}  // namespace
