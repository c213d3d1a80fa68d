#include <gtest/gtest.h>

#include "server.h"

namespace tornby {
namespace {

using testing::Bstr;
using testing::call;
using testing::long_variant;
using testing::Outcome;
using testing::OwnedVariant;
using testing::Server;

constexpr LONG crc32_of_digits = -873187034;

TEST(CrcObject, EarlyBoundResultsHaveTheStatedTypes) {
  const Server server;
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  OwnedVariant value;
  ASSERT_EQ(crc->AddString(Bstr(L"123456789"), value.get()), S_OK);
  EXPECT_EQ(value->vt, VT_I4);
  EXPECT_EQ(value->lVal, crc32_of_digits);
  ASSERT_EQ(crc->CalculateFile(Bstr(L"no such file"), value.get()), S_OK);
  EXPECT_EQ(value->vt, VT_I2);
  EXPECT_EQ(value->iVal, -1);
  ASSERT_EQ(crc->put_Algorithm(7), S_OK);
  ASSERT_EQ(crc->get_Value(value.get()), S_OK);
  EXPECT_EQ(value->vt, VT_EMPTY);
  LONG bare = 0;
  ASSERT_EQ(crc->WIN64_AddCrc32(Bstr(L"123456789"), -1, &bare), S_OK);
  EXPECT_EQ(~bare, crc32_of_digits);
}

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

TEST(CrcObject, ValueTakesWhateverIsANumber) {
  const Server server;
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  const auto put = [&](VARIANT value) { return static_cast<ULONG>(crc->put_Value(value)); };
  const auto read = [&] {
    OwnedVariant value;
    EXPECT_EQ(crc->get_Value(value.get()), S_OK);
    return value->lVal;
  };
  VARIANT value;
  ::VariantInit(&value);
  value.vt = VT_R8;
  value.dblVal = 2.5;
  EXPECT_EQ(put(value), 0u);
  EXPECT_EQ(read(), ~2);
  value.vt = VT_ERROR;
  value.scode = DISP_E_PARAMNOTFOUND;
  EXPECT_EQ(put(value), 0x800A000Du);
  VARIANT number = long_variant(5);
  EXPECT_EQ(put(testing::variable(&number)), 0u);
  EXPECT_EQ(read(), ~5);
  OwnedVariant text(testing::string_variant(L"&HFF"));
  EXPECT_EQ(put(*text), 0u);
  EXPECT_EQ(read(), ~255);
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

TEST(CrcObject, LateBoundCallsConvertTheirArguments) {
  const Server server;
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  Outcome outcome;
  VARIANT digits = long_variant(123456789);
  call(outcome, crc.get(), L"addstring", DISPATCH_METHOD | DISPATCH_PROPERTYGET, {testing::variable(&digits)});
  ASSERT_EQ(outcome.result, S_OK);
  EXPECT_EQ(outcome.value->lVal, crc32_of_digits);
}

}  // namespace
}  // namespace tornby
