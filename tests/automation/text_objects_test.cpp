// clsEncryptXOR, clsApi and clsWebEncryption as early- and late-bound callers see them.
#include <gtest/gtest.h>

#include <string_view>

#include "automation/com/convert.h"
#include "server.h"

namespace tornby {
namespace {

using automation::view;
using testing::Bstr;
using testing::call;
using testing::Outcome;
using testing::OwnedVariant;
using testing::Server;

VARIANT array_variant(SAFEARRAY* array, VARTYPE element) {
  VARIANT value;
  ::VariantInit(&value);
  value.vt = static_cast<VARTYPE>(VT_ARRAY | element);
  value.parray = array;
  return value;
}

/// An array of the bytes of `text`, its first index being `lower`.
VARIANT bytes_from(LONG lower, std::string_view text) {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_UI1, lower, static_cast<ULONG>(text.size()));
  std::copy(text.begin(), text.end(), static_cast<char*>(array->pvData));
  return array_variant(array, VT_UI1);
}

/// The same as scripts make it: an array of numbers in variants.
VARIANT numbers_from(LONG lower, std::string_view text) {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_VARIANT, lower, static_cast<ULONG>(text.size()));
  auto* element = static_cast<VARIANT*>(array->pvData);
  for (const char character : text) *element++ = testing::long_variant(character);
  return array_variant(array, VT_VARIANT);
}

std::string text_of(SAFEARRAY* bytes) {
  LONG lower = -1;
  EXPECT_EQ(::SafeArrayGetLBound(bytes, 1, &lower), S_OK);
  EXPECT_EQ(lower, 0);
  return std::string(static_cast<const char*>(bytes->pvData), bytes->rgsabound[0].cElements);
}

TEST(WebEncryptionObject, ChangesTheCallersText) {
  const Server server;
  const auto web = server.create<IclsWebEncryption>(CLSID_clsWebEncryption);
  Bstr text(L"AB"), result(L"");
  ASSERT_EQ(web->Encrypt(text.address(), Bstr(L"k"), result.address()), S_OK);
  EXPECT_EQ(view(text), u"*)");
  EXPECT_EQ(view(result), u"Kik=");
  Bstr none(L"");
  EXPECT_EQ(static_cast<ULONG>(web->Encrypt(text.address(), nullptr, none.address())), 0x800A000Bul);
  EXPECT_EQ(view(text), u"*)");
  EXPECT_EQ(web->Encrypt(nullptr, nullptr, none.address()), E_POINTER);

  // A script's variable of another type becomes one of the right type.
  OwnedVariant key(testing::string_variant(L"k"));
  Outcome outcome;
  OwnedVariant number(testing::long_variant(12));
  call(outcome, web.get(), L"Encrypt", DISPATCH_METHOD, {testing::variable(number.get()), *key});
  ASSERT_EQ(outcome.result, S_OK);
  ASSERT_EQ(number->vt, VT_BSTR);
  EXPECT_EQ(view(number->bstrVal), u"ZY");
}

TEST(WebEncryptionObject, TakesArraysOfAnyLowerBoundAndOfVariants) {
  const Server server;
  const auto web = server.create<IclsWebEncryption>(CLSID_clsWebEncryption);
  for (const LONG lower : {0, 1, -5}) {
    OwnedVariant bytes(bytes_from(lower, "foob")), numbers(numbers_from(lower, "foob"));
    OwnedVariant encoded;
    encoded->vt = VT_ARRAY | VT_UI1;
    ASSERT_EQ(web->bsEncode(&bytes->parray, &encoded->parray), S_OK);
    EXPECT_EQ(text_of(encoded->parray), "Zm9vYg==");

    const VARIANT two = testing::long_variant(2);
    for (VARIANT* argument : {bytes.get(), numbers.get()}) {
      Outcome outcome;
      for (const VARIANT& form : {*argument, testing::variable(argument)}) {
        call(outcome, web.get(), L"bsEncode2", DISPATCH_METHOD, {form, two});
        ASSERT_EQ(outcome.result, S_OK);
        ASSERT_EQ(outcome.value->vt, VT_ARRAY | VT_UI1);
        EXPECT_EQ(text_of(outcome.value->parray), "Zm8=");
      }
      EXPECT_EQ(argument->parray->rgsabound[0].cElements, 4u) << "the caller's array is as it was";
    }
    Outcome decoded;
    call(decoded, web.get(), L"bsDecode", DISPATCH_METHOD, {testing::variable(encoded.get())});
    ASSERT_EQ(decoded.result, S_OK);
    EXPECT_EQ(text_of(decoded.value->parray), "foob");
  }
}

TEST(WebEncryptionObject, RefusesWhatIsNoByteArrayAndCountsBeyondIt) {
  const Server server;
  const auto web = server.create<IclsWebEncryption>(CLSID_clsWebEncryption);
  OwnedVariant bytes(bytes_from(1, "foo"));
  for (const LONG count : {-1L, 4L, 0x7FFFFFFFL}) {
    SAFEARRAY* result = nullptr;
    EXPECT_EQ(static_cast<ULONG>(web->bsEncode2(&bytes->parray, count, &result)), 0x800A0009ul);
    EXPECT_EQ(result, nullptr);
  }
  SAFEARRAY* none = nullptr;
  OwnedVariant empty;
  empty->vt = VT_ARRAY | VT_UI1;
  ASSERT_EQ(web->bsEncode(&none, &empty->parray), S_OK) << "an array that was never given a size";
  EXPECT_EQ(text_of(empty->parray), "");

  OwnedVariant words(array_variant(::SafeArrayCreateVector(VT_I2, 0, 2), VT_I2));
  SAFEARRAY* result = nullptr;
  EXPECT_EQ(static_cast<ULONG>(web->bsEncode(&words->parray, &result)), 0x800A000Dul);
  SAFEARRAYBOUND bounds[2] = {{2, 0}, {2, 0}};
  OwnedVariant table(array_variant(::SafeArrayCreate(VT_UI1, 2, bounds), VT_UI1));
  EXPECT_EQ(static_cast<ULONG>(web->bsEncode(&table->parray, &result)), 0x800A000Dul);

  OwnedVariant large(numbers_from(0, "x"));
  static_cast<VARIANT*>(large->parray->pvData)->lVal = 256;
  OwnedVariant text(testing::string_variant(L"foo"));
  const struct {
    VARIANT* argument;
    HRESULT result;
  } cases[] = {{large.get(), DISP_E_OVERFLOW}, {text.get(), DISP_E_TYPEMISMATCH}, {words.get(), DISP_E_TYPEMISMATCH}};
  for (const auto& [argument, expected] : cases) {
    Outcome outcome;
    call(outcome, web.get(), L"bsEncode", DISPATCH_METHOD, {*argument});
    EXPECT_EQ(outcome.result, expected);
    call(outcome, web.get(), L"bsEncode", DISPATCH_METHOD, {testing::variable(argument)});
    EXPECT_EQ(outcome.result, expected);
  }
}

}  // namespace
}  // namespace tornby
