#include "checksums/clsCRC.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/runtime_error.h"
#include "checksums/crc/kernels.h"
#include "checksums/crc/tables.h"
#include "platform/room.h"

namespace tornby {
namespace {

enum : std::int32_t { algorithm_crc16 = 0, algorithm_crc32 = 1 };

constexpr std::int32_t crc32_start = -1;

std::int32_t as_signed(std::uint32_t bits) {
  return static_cast<std::int32_t>(bits);
}

/// A file's size as the size of a buffer for it. Raises 7 (out of memory) where no buffer can be that large.
std::size_t buffer_size(std::uint64_t file_size) {
  if (file_size > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()))
    throw RuntimeError(StandardError::out_of_memory);
  return static_cast<std::size_t>(file_size);
}

/// Reads the file through one small block, which stays in the cache, for a new page of memory costs more than reading
/// it full. A file for whose whole content there is no room is refused. What is not to be summed is read all the same,
/// since that may fail.
std::uint32_t read_and_sum(InputFile& file, std::size_t size, bool sums) {
  std::array<std::uint8_t, 1 << 16> block;
  if (size > block.size()) require_room(size);
  auto crc = static_cast<std::uint32_t>(crc32_start);
  for (std::size_t done = 0; done < size;) {
    const std::size_t want = std::min(block.size(), size - done);
    const std::size_t got = file.read({block.data(), want});
    if (sums) crc = crc::update_crc32(crc, block.data(), got);
    if (got < want) break;
    done += got;
  }
  return crc;
}

/// A failure leaves the file open, as the caller's contract says.
std::uint32_t sum_whole(InputFile& file, bool sums) {
  try {
    return read_and_sum(file, buffer_size(file.size()), sums);
  } catch (...) {
    file.leave_open();
    throw;
  }
}

}  // namespace

clsCRC::clsCRC(const AnsiCodePage& code_page, const Files& files, const Process& process)
    : code_page_(&code_page), files_(&files), process_(&process) {}

std::int32_t clsCRC::WIN64_AddCrc32(StringView text, std::int32_t crc) const {
  auto value = static_cast<std::uint32_t>(crc);
  if (code_page_->bytes_per_unit() == 1) {
    code_page_->encode_by_blocks(
        text, [&value](ByteView block) { value = crc::update_crc32(value, block.data(), block.size()); });
    return as_signed(value);
  }
  for (const char16_t character : text) {
    const unsigned code = character < 0x80 ? character : code_page_->code_of(character);
    if (code > 0xFF) throw RuntimeError(StandardError::subscript_out_of_range);
    value = crc::step_crc32(value, code);
  }
  return as_signed(value);
}

Variant clsCRC::AddString(StringView text) {
  const bool selected = algorithm_ == algorithm_crc16 || algorithm_ == algorithm_crc32;
  if (text.empty() && selected) throw RuntimeError(StandardError::subscript_out_of_range);
  if (selected) code_page_->encode_by_blocks(text, [this](ByteView block) { add_bytes(block); });
  return Value();
}

void clsCRC::Algorithm(std::int32_t value) {
  algorithm_ = value;
  Clear();
}

Variant clsCRC::CalculateFile(StringView file_name) const {
  try {
    if (buffer_size(files_->size(file_name)) == 0) return {};
    const bool computes = !process_->is_wow64();
    const auto file = files_->open_for_reading(file_name);
    const std::uint32_t crc = sum_whole(*file, computes);
    if (!computes) return {};
    return as_signed(~crc);
  } catch (const std::exception&) {
    return std::int16_t{-1};
  }
}

Variant clsCRC::CalculateString(StringView text) {
  if (process_->is_wow64()) return ~WIN64_AddCrc32(text, 0);
  Clear();
  return AddString(text);
}

Variant clsCRC::Value() const {
  switch (algorithm_) {
    case algorithm_crc16:
      return crc16_ & 0xFFFF;
    case algorithm_crc32:
      return ~crc32_;
    default:
      return {};
  }
}

void clsCRC::Value(const Variant& value) {
  const std::int32_t number = to_int32(value);
  if (algorithm_ == algorithm_crc16) crc16_ = number;
  if (algorithm_ == algorithm_crc32) crc32_ = number;
}

void clsCRC::Clear() {
  crc16_ = 0;
  crc32_ = crc32_start;
}

void clsCRC::add_bytes(ByteView bytes) {
  if (algorithm_ == algorithm_crc16)
    crc16_ = crc::update_crc16(static_cast<std::uint16_t>(crc16_), bytes.data(), bytes.size());
  else
    crc32_ = as_signed(crc::update_crc32(static_cast<std::uint32_t>(crc32_), bytes.data(), bytes.size()));
}

}  // namespace tornby
