#include "checksums/clsCRC.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <utility>

#include "base/runtime_error.h"
#include "checksums/crc/kernels.h"
#include "checksums/crc/tables.h"

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

/// The whole file in one piece. A failure leaves the file open, as the caller's contract says.
std::pair<std::unique_ptr<std::uint8_t[]>, std::size_t> read_whole(InputFile& file) {
  try {
    const std::size_t size = buffer_size(file.size());
    auto buffer = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    const std::size_t got = file.read({buffer.get(), size});
    return {std::move(buffer), got};
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
    const auto [bytes, size] = read_whole(*file);
    if (!computes) return {};
    return as_signed(~crc::update_crc32(static_cast<std::uint32_t>(crc32_start), bytes.get(), size));
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
