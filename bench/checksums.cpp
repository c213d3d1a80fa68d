// Checksums from 16 bytes to 64 MiB: the block updates, and the members that take text.
//
// Peers are given text as a program would have to give it: turned into bytes in pieces that stay in the cache.
#include <libdeflate.h>
#include <zlib.h>

#include "base/single_byte_code_page.h"
#include "bench/measure.h"
#include "checksums/clsCRC.h"
#include "checksums/crc/kernels.h"

#ifdef BENCH_ISAL
#include <isa-l.h>
#endif

namespace {

using namespace tornby;
using bench::short_lengths;
using Data = const std::uint8_t*;

template <class Update>
void add_blocks(const char* name, Update update) {
  bench::add(name, {short_lengths, 16, 64, 256, 1024, 4096, 65'536, 1 << 20, 1 << 24, 1 << 26}, bench::some_bytes,
             [update](const Bytes& bytes, std::size_t size) { benchmark::DoNotOptimize(update(bytes.data(), size)); });
}

/// What nobody would give much to do.
template <class Update>
void add_slow(const char* name, Update update) {
  bench::add(name, {short_lengths, 16, 64, 256, 1024, 65'536}, bench::some_bytes,
             [update](const Bytes& bytes, std::size_t size) { benchmark::DoNotOptimize(update(bytes.data(), size)); });
}

template <class Step>
void add_texts(const char* name, Step step) {
  bench::add(
      name, {short_lengths, 16, 1024, 65'536, 1 << 20, 1 << 24, 1 << 26},
      [](std::size_t size) { return bench::some_text(size); },
      [step](const String& text, std::size_t size) {
        benchmark::DoNotOptimize(step(StringView(text).substr(0, size)));
      });
}

/// Narrows ASCII in pieces of 4 KiB, as plain code does, and hands them over.
std::uint32_t in_pieces(StringView text) {
  std::uint8_t piece[4096];
  std::uint32_t crc = 0;
  for (std::size_t at = 0; at < text.size(); at += sizeof piece) {
    const std::size_t size = std::min(sizeof piece, text.size() - at);
    for (std::size_t i = 0; i < size; ++i) piece[i] = static_cast<std::uint8_t>(text[at + i]);
    crc = libdeflate_crc32(crc, piece, size);
  }
  return crc;
}

const bool added = [] {
  add_blocks("CRC-32/Tornby", [](Data data, std::size_t size) { return ~crc::update_crc32(~0u, data, size); });
  add_blocks("CRC-32/libdeflate", [](Data data, std::size_t size) { return libdeflate_crc32(0, data, size); });
#ifdef BENCH_ISAL
  add_blocks("CRC-32/ISA-L", [](Data data, std::size_t size) { return crc32_gzip_refl(0, data, size); });
#endif
  add_blocks("CRC-32/zlib", [](Data data, std::size_t size) { return crc32_z(0, data, size); });
  add_slow("CRC-32/classic table",
           [](Data data, std::size_t size) { return crc::update_crc32_bytewise(0, data, size); });
  add_blocks("CRC-16/Tornby", [](Data data, std::size_t size) { return crc::update_crc16(0, data, size); });
#ifdef BENCH_ISAL
  add_blocks("CRC-16/ISA-L, other polynomial", [](Data data, std::size_t size) { return crc16_t10dif(0, data, size); });
#endif
  add_slow("CRC-16/classic table",
           [](Data data, std::size_t size) { return crc::update_crc16_bytewise(0, data, size); });
  add_texts("AddString/Tornby", [](StringView text) {
    static clsCRC crc;
    return crc.AddString(text);
  });
  add_texts("AddString/pieces, then libdeflate", in_pieces);
  add_texts("WIN64_AddCrc32/Tornby", [](StringView text) {
    static clsCRC crc;
    return crc.WIN64_AddCrc32(text, -1);
  });
  add_texts("WIN64_AddCrc32/pieces, then libdeflate", in_pieces);
  return true;
}();

}  // namespace
