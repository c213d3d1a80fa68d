#include "platform/windows/code_page.h"

#include <utility>
#include <vector>

#include "base/single_byte_code_page.h"
#include "platform/code_page.h"
#include "platform/windows/system.h"

namespace tornby {
namespace windows {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));
const wchar_t* wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}
wchar_t* wide(char16_t* text) {
  return reinterpret_cast<wchar_t*>(text);
}
const char* narrow(const std::uint8_t* bytes) {
  return reinterpret_cast<const char*>(bytes);
}
char* narrow(std::uint8_t* bytes) {
  return reinterpret_cast<char*>(bytes);
}

/// A code page in which some characters take several bytes.
class MultiByteCodePage final : public AnsiCodePage {
 public:
  MultiByteCodePage(unsigned identifier, unsigned longest) : identifier_(identifier), longest_(longest) {}

  unsigned identifier() const override { return identifier_; }
  std::size_t bytes_per_unit() const override { return longest_; }

  std::size_t encode(StringView text, std::uint8_t* out) const override {
    if (text.empty()) return 0;
    return static_cast<std::size_t>(::WideCharToMultiByte(identifier_, 0, wide(text.data()),
                                                          static_cast<int>(text.size()), narrow(out),
                                                          static_cast<int>(text.size() * longest_), nullptr, nullptr));
  }

  std::size_t decode(ByteView bytes, char16_t* out) const override {
    if (bytes.empty()) return 0;
    return static_cast<std::size_t>(::MultiByteToWideChar(identifier_, 0, narrow(bytes.data()),
                                                          static_cast<int>(bytes.size()), wide(out),
                                                          static_cast<int>(bytes.size())));
  }

  unsigned code_of(char16_t character) const override {
    std::uint8_t bytes[8] = {};
    const std::size_t length = encode(StringView(&character, 1), bytes);
    return length < 2 ? bytes[0] : bytes[0] * 256u + bytes[1];
  }

 private:
  unsigned identifier_;
  unsigned longest_;
};

std::unique_ptr<const AnsiCodePage> tabulate(unsigned identifier) {
  Characters characters{};
  for (unsigned code = 0; code < characters.size(); ++code) {
    const char byte = static_cast<char>(code);
    if (::MultiByteToWideChar(identifier, 0, &byte, 1, wide(&characters[code]), 1) != 1)
      characters[code] = static_cast<char16_t>(code);
  }
  std::vector<std::uint8_t> codes(0x10000, std::uint8_t{'?'});
  for (unsigned unit = 0; unit < codes.size(); ++unit) {  // one at a time, so that no two surrogates count as a pair
    const auto character = static_cast<wchar_t>(unit);
    ::WideCharToMultiByte(identifier, 0, &character, 1, narrow(&codes[unit]), 1, nullptr, nullptr);
  }
  return std::make_unique<SingleByteCodePage>(identifier, characters, std::move(codes));
}

}  // namespace

std::unique_ptr<const AnsiCodePage> make_code_page(unsigned identifier) {
  CPINFO info{};
  if (::GetCPInfo(identifier, &info) && info.MaxCharSize > 1)
    return std::make_unique<MultiByteCodePage>(identifier, info.MaxCharSize);
  return tabulate(identifier);
}

}  // namespace windows

const AnsiCodePage& native_code_page() {
  static const std::unique_ptr<const AnsiCodePage> page = windows::make_code_page(::GetACP());
  return *page;
}

}  // namespace tornby
