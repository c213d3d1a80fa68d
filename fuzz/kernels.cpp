// Every kernel against the others and the published form: CRC-32 against zlib, the rest against a byte at a time.
#include <zlib.h>

#include <vector>

#include "checksums/base64/kernels.h"
#include "checksums/crc/kernels.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"
#include "fuzz/target.h"

namespace tornby::fuzz {
namespace {

template <class Kernels, class Test>
void each(const Kernels& kernels, Test test) {
  for (const auto& kernel : kernels)
    if ((kernel.needs & ~available_features()) == 0) test(kernel);
}

/// All kernels make the same digits, read them back, and find the same first group that holds something else.
template <class Kernels>
void check_codec(const Kernels& kernels, ByteView bytes, std::size_t bytes_a_group, std::size_t digits_a_group) {
  const std::size_t groups = bytes.size() / bytes_a_group;
  std::vector<std::uint8_t> first;
  each(kernels, [&](const Codec& kernel) {
    std::vector<std::uint8_t> digits(groups * digits_a_group), back(groups * bytes_a_group);
    kernel.encode(bytes.data(), groups, digits.data());
    REQUIRE(first.empty() || digits == first);
    first = digits;
    REQUIRE(kernel.decode(digits.data(), groups, back.data()) == groups);
    REQUIRE(std::equal(back.begin(), back.end(), bytes.begin()));
    std::vector<char16_t> units(digits.size());
    kernel.encode_units(bytes.data(), groups, units.data());
    REQUIRE(std::equal(digits.begin(), digits.end(), units.begin()));
    REQUIRE(kernel.decode_units(units.data(), groups, back.data()) == groups);
    REQUIRE(std::equal(back.begin(), back.end(), bytes.begin()));
  });
  const std::size_t raw_groups = bytes.size() / digits_a_group;
  std::size_t stops = ~std::size_t{0};
  each(kernels, [&](const Codec& kernel) {
    std::vector<std::uint8_t> out(raw_groups * bytes_a_group);
    const std::size_t good = kernel.decode(bytes.data(), raw_groups, out.data());
    REQUIRE(stops == ~std::size_t{0} || good == stops);
    stops = good;
  });
}

}  // namespace

void kernels(Input input) {
  const std::uint32_t start = input.word();
  const ByteView key = input.take(1 + input.below(80));
  const std::size_t shift = input.below(64);
  const ByteView rest = input.rest();
  std::vector<std::uint8_t> room(shift + rest.size());  // at any alignment, and its end is an end of memory
  std::copy(rest.begin(), rest.end(), room.begin() + static_cast<std::ptrdiff_t>(shift));
  const ByteView data = ByteView(room).subspan(shift);

  const std::uint32_t expected =  // without bytes zlib starts anew
      data.empty() ? ~start : static_cast<std::uint32_t>(::crc32(~start, data.data(), static_cast<uInt>(data.size())));
  std::uint16_t by_bytes = static_cast<std::uint16_t>(start);
  for (const std::uint8_t& byte : data) by_bytes = crc::kernels().back().update_crc16(by_bytes, &byte, 1);
  each(crc::kernels(), [&](const auto& kernel) {
    REQUIRE(~kernel.update_crc32(start, data.data(), data.size()) == expected);
    REQUIRE(kernel.update_crc16(static_cast<std::uint16_t>(start), data.data(), data.size()) == by_bytes);
  });

  check_codec(hex::kernels(), data, 1, 2);
  check_codec(base64::kernels(), data, 3, 4);
  if (key.empty()) return;
  const std::size_t phase = start % key.size();
  each(keyed_xor::kernels(), [&](const auto& kernel) {
    std::vector<std::uint8_t> changed(data.size());
    kernel.apply(data.data(), changed.data(), changed.size(), key.data(), key.size(), phase);
    for (std::size_t i = 0; i < changed.size(); ++i) REQUIRE(changed[i] == (data[i] ^ key[(phase + i) % key.size()]));
  });
}

}  // namespace tornby::fuzz
