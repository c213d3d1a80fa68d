#include "base/runtime_error.h"

#include <gtest/gtest.h>

namespace tornby {
namespace {

TEST(RuntimeError, CarriesNumberAndText) {
  const RuntimeError standard(StandardError::subscript_out_of_range);
  EXPECT_EQ(standard.number(), 9);
  EXPECT_EQ(standard.description(), u"Subscript out of range");
  EXPECT_STREQ(standard.what(), "run-time error 9: Subscript out of range");

  const RuntimeError own(object_error_base + 3, u"No caf\u00E9");
  EXPECT_EQ(static_cast<std::uint32_t>(own.number()), 0x80040003u);
  EXPECT_STREQ(own.what(), "run-time error -2147221501: No caf?");
}

}  // namespace
}  // namespace tornby
