// Which kernels the library takes: a resolver that found no features would leave every vector kernel unused, and the
// suites of the kernels would pass over them.
#include <gtest/gtest.h>

#include <string_view>

#include "base/code_map.h"
#include "checksums/base64/kernels.h"
#include "checksums/crc/kernels.h"
#include "checksums/hex/kernels.h"
#include "checksums/keyed_xor/kernels.h"

namespace tornby {
namespace {

#if defined(__x86_64__) || defined(__i386__)
TEST(ChosenKernels, AreTheWidestThatTheProcessorHas) {
  const bool avx = __builtin_cpu_supports("avx"), avx2 = __builtin_cpu_supports("avx2");
  ASSERT_TRUE(__builtin_cpu_supports("ssse3") && __builtin_cpu_supports("pclmul"))
      << "processors have had both since 2010";
  const std::string_view narrow = avx ? "128 bits" : "128 bits, older encoding", of_bytes = avx2 ? "256 bits" : narrow;
  EXPECT_EQ(keyed_xor::best().name, of_bytes);
  const bool avx512 = __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl");
  const bool permutes = avx512 && __builtin_cpu_supports("avx512vbmi");
  const std::string_view of_digits = permutes ? "256 bits, 512 of units" : of_bytes;
  EXPECT_EQ(hex::best().name, of_digits);
  EXPECT_EQ(base64::best().name, of_digits);
  EXPECT_STREQ(code_maps().name, permutes ? "permuted" : avx2 ? "avx2" : avx ? "avx" : "plain");
  const bool wide = avx2 && __builtin_cpu_supports("vpclmulqdq");
  const std::string_view folded = wide && avx512 ? "512 bits" : wide ? "256 bits" : narrow;
  EXPECT_EQ(crc::best->name, folded);
}
#endif

TEST(ChosenKernels, AreTheFirstWhoseNeedsAreMet) {
  constexpr crc::Kernel kernels[] = {
      {"wide", 0b110, crc::update_crc16_sliced, crc::update_crc32_sliced},
      {"narrow", 0b010, crc::update_crc16_sliced, crc::update_crc32_sliced},
      {"plain", no_features, crc::update_crc16_bytewise, crc::update_crc32_bytewise},
  };
  const auto choice = [&](Features features) {
    return std::string_view(resolve(std::span<const crc::Kernel>(kernels), features).name);
  };
  EXPECT_EQ(choice(0b111), "wide");
  EXPECT_EQ(choice(0b010), "narrow");
  EXPECT_EQ(choice(0b100), "plain");
  EXPECT_EQ(choice(no_features), "plain");
  EXPECT_STREQ(Chosen<crc::Kernel>(kernels)->name, "plain") << "before the library is loaded";
}

}  // namespace
}  // namespace tornby
