#include "checksums/clsApi.h"

#include <algorithm>
#include <array>
#include <exception>
#include <limits>
#include <memory>

#include "base/runtime_error.h"

namespace tornby {
namespace {

constexpr std::size_t block_size = 1 << 14;

class Hourglass {
 public:
  explicit Hourglass(const MousePointer& pointer) : pointer_(pointer) { pointer_.show_hourglass(); }
  ~Hourglass() { pointer_.show_default(); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  const MousePointer& pointer_;
};

bool is_high_surrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

/// Hands the bytes of `text` and of a line break to `take`, block by block.
template <class Take>
void encode_line(const AnsiCodePage& code_page, StringView text, Take take) {
  constexpr std::size_t most_units = std::size_t{1} << 20;  // the disk likes large blocks
  const std::size_t line_break = 2;
  const std::size_t units = std::min(text.size(), most_units);
  const auto block = std::make_unique_for_overwrite<std::uint8_t[]>(units * code_page.bytes_per_unit() + line_break);
  for (;;) {
    std::size_t length = std::min(units, text.size());
    if (length < text.size() && is_high_surrogate(text[length - 1])) --length;  // a pair stays together
    std::size_t used = code_page.encode(text.substr(0, length), block.get());
    text.remove_prefix(length);
    if (text.empty()) {
      block[used++] = '\r';
      block[used++] = '\n';
    }
    take(ByteView(block.get(), used));
    if (text.empty()) return;
  }
}

/// Makes the `size` bytes that `copy(from, to)` writes the content of `file`. What lies beyond the earlier end is
/// written first, so that a full disk is noticed while the earlier content is still whole; `on_destruction` is called
/// when it ceases to be.
template <class Copy, class OnDestruction>
void overwrite(OutputFile& file, std::uint64_t size, Copy copy, OnDestruction on_destruction) {
  const std::uint64_t earlier_size = file.size();
  const std::uint64_t kept = std::min(earlier_size, size);
  try {
    copy(kept, size);
  } catch (...) {
    file.resize(earlier_size);
    throw;
  }
  on_destruction();
  copy(0, kept);
  file.resize(size);
  file.flush();
}

/// With the new text beside it all the while.
void overwrite(OutputFile& file, std::uint64_t size, Replacement& source) {
  std::array<std::uint8_t, block_size> block;
  const auto copy = [&](std::uint64_t from, std::uint64_t to) {
    while (from < to) {
      const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), to - from));
      if (source.read(from, {block.data(), length}) != length) throw RuntimeError(StandardError::device_io_error);
      file.write(from, {block.data(), length});
      from += length;
    }
  };
  overwrite(file, size, copy, [&] { source.keep(); });
  source.done();
}

/// The text of a file's first `size` bytes, or of as many as there are.
String read_text(InputFile& file, std::size_t size, const AnsiCodePage& code_page) {
  String text;
  text.reserve(size);
  std::array<std::uint8_t, block_size> bytes;
  std::array<char16_t, block_size / 4> characters;  // a part at a time, which stays in the nearest cache
  while (size != 0) {
    const std::size_t got = file.read({bytes.data(), std::min(bytes.size(), size)});
    if (got == 0) break;
    for (ByteView left(bytes.data(), got); !left.empty();) {
      const ByteView part = left.first(std::min(left.size(), characters.size()));
      text.append(characters.data(), code_page.decode(part, characters.data()));
      left = left.subspan(part.size());
    }
    size -= got;
  }
  return text;
}

/// The same for a code page with two-byte characters, which blocks would cut in half.
String read_text_at_once(InputFile& file, std::size_t size, const AnsiCodePage& code_page) {
  const auto bytes = std::make_unique_for_overwrite<std::uint8_t[]>(size);
  return code_page.decode({bytes.get(), file.read({bytes.get(), size})});
}

}  // namespace

clsApi::clsApi(const AnsiCodePage& code_page, const Files& files, const MousePointer& pointer)
    : code_page_(&code_page), files_(&files), pointer_(&pointer) {}

bool clsApi::apiSaveFile(StringView file_name, StringView text) const {
  const Hourglass shown(*pointer_);
  try {
    save(file_name, text);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

String clsApi::ApiReadFile(StringView file_name) const {
  try {
    const auto file = files_->open_for_reading(file_name);
    const std::uint64_t size = file->size();
    if (size > std::numeric_limits<std::int32_t>::max()) return {};
    const auto read = code_page_->bytes_per_unit() == 1 ? read_text : read_text_at_once;
    return read(*file, static_cast<std::size_t>(size), *code_page_);
  } catch (const std::exception&) {
    return {};
  }
}

void clsApi::save(StringView file_name, StringView text) const {
  if (const auto replacement = files_->replace(file_name)) {
    std::uint64_t size = 0;
    encode_line(*code_page_, text, [&](ByteView bytes) {
      replacement->write(bytes);
      size += bytes.size();
    });
    if (!replacement->commit()) overwrite(*files_->open_for_writing(file_name), size, *replacement);
  } else {
    Bytes line;
    line.reserve((text.size() + 2) * code_page_->bytes_per_unit());
    encode_line(*code_page_, text, [&](ByteView bytes) { line.insert(line.end(), bytes.begin(), bytes.end()); });
    const auto file = files_->open_for_writing(file_name);
    const auto copy = [&](std::uint64_t from, std::uint64_t to) {
      file->write(from, ByteView(line).subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
    };
    overwrite(*file, line.size(), copy, [] {});
  }
}

}  // namespace tornby
