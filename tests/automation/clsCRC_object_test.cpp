#include <gtest/gtest.h>

#include "server.h"

namespace tornby {
namespace {

using testing::Bstr;
using testing::call;
using testing::Outcome;
using testing::OwnedVariant;
using testing::Server;

TEST(CrcObject, RunTimeErrorsArriveWithNumberTextAndSource) {
  const Server server;
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  OwnedVariant value;
  EXPECT_EQ(static_cast<ULONG>(crc->AddString(nullptr, value.get())), 0x800A0009ul) << "a null BSTR is empty text";
  testing::ComPtr<IErrorInfo> info;
  ASSERT_EQ(::GetErrorInfo(0, info.out()), S_OK);
  Bstr description;
  ASSERT_EQ(info->GetDescription(description.address()), S_OK);
  EXPECT_STREQ(description, L"Subscript out of range");

  Outcome outcome;
  OwnedVariant empty(testing::string_variant(L""));
  call(outcome, crc.get(), L"AddString", DISPATCH_METHOD, {*empty});
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.source, L"Tornby.clsCRC");
}

TEST(CrcObject, WrongCallsFailAndLoseNothing) {
  const Server server;
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  EXPECT_EQ(crc->AddString(Bstr(L"x"), nullptr), E_POINTER);
  OwnedVariant value;
  ASSERT_EQ(crc->get_Value(value.get()), S_OK);
  EXPECT_EQ(value->lVal, 0) << "nothing was added";

  Outcome outcome;
  call(outcome, crc.get(), L"AddString", DISPATCH_METHOD);
  EXPECT_EQ(outcome.result, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(crc->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_INVALIDARG);
}

}  // namespace
}  // namespace tornby
