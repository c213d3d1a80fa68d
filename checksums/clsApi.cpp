#include "checksums/clsApi.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <memory>

namespace tornby {
namespace {

constexpr std::size_t block_size = 1 << 16;

class Hourglass {
 public:
  explicit Hourglass(const MousePointer& pointer) : pointer_(pointer) { pointer_.show_hourglass(); }
  ~Hourglass() { pointer_.show_default(); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  const MousePointer& pointer_;
};

/// Makes `bytes` the content of `file`. What lies beyond the earlier end is written first, so that a full disk is
/// noticed while the earlier content is still whole.
void overwrite(OutputFile& file, ByteView bytes) {
  const std::uint64_t earlier_size = file.size();
  const std::size_t kept = static_cast<std::size_t>(std::min<std::uint64_t>(earlier_size, bytes.size()));
  try {
    file.write(kept, bytes.subspan(kept));
  } catch (...) {
    file.resize(earlier_size);
    throw;
  }
  file.write(0, bytes.first(kept));
  file.resize(bytes.size());
  file.flush();
}

/// The text of a file's first `size` bytes, or of as many as there are.
String read_text(InputFile& file, std::size_t size, const AnsiCodePage& code_page) {
  // Blocks would cut a two-byte character in half.
  const std::size_t most = code_page.bytes_per_unit() == 1 ? std::min(block_size, size) : size;
  const auto block = std::make_unique_for_overwrite<std::uint8_t[]>(most);
  const auto characters = std::make_unique_for_overwrite<char16_t[]>(most);
  String text;
  text.reserve(size);
  while (size != 0) {
    const std::size_t got = file.read({block.get(), std::min(most, size)});
    if (got == 0) break;
    text.append(characters.get(), code_page.decode({block.get(), got}, characters.get()));
    size -= got;
  }
  return text;
}

}  // namespace

clsApi::clsApi(const AnsiCodePage& code_page, const Files& files, const MousePointer& pointer)
    : code_page_(&code_page), files_(&files), pointer_(&pointer) {}

bool clsApi::apiSaveFile(StringView file_name, StringView text) const {
  const Hourglass shown(*pointer_);
  try {
    Bytes line = code_page_->encode(text);
    line.insert(line.end(), {'\r', '\n'});
    save(file_name, line);
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
    return read_text(*file, static_cast<std::size_t>(size), *code_page_);
  } catch (const std::exception&) {
    return {};
  }
}

void clsApi::save(StringView file_name, ByteView bytes) const {
  if (const auto replacement = files_->replace(file_name)) {
    replacement->write(0, bytes);
    replacement->flush();
    replacement->commit();
  } else {
    overwrite(*files_->open_for_writing(file_name), bytes);
  }
}

}  // namespace tornby
