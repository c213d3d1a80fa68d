// Callers that the DLL must not trip over, and what it must not leave behind.
#include <gtest/gtest.h>

#include <string>

#include "server.h"

namespace tornby {
namespace {

using testing::Bstr;
using testing::call;
using testing::Outcome;
using testing::OwnedVariant;
using testing::Server;

/// Counts what the task allocator hands out and gets back; strings and arrays come from there too.
class MallocSpy final : public IMallocSpy {
 public:
  long live() const { return live_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = iid == IID_IUnknown || iid == IID_IMallocSpy ? this : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
  void* STDMETHODCALLTYPE PostAlloc(void* block) override {
    live_ += block ? 1 : 0;
    return block;
  }
  void* STDMETHODCALLTYPE PreFree(void* block, BOOL spied) override {
    live_ -= block && spied ? 1 : 0;
    return block;
  }
  void STDMETHODCALLTYPE PostFree(BOOL) override {}
  SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** now, BOOL) override {
    *now = block;
    return size;
  }
  void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override { return block; }
  void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
  SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
  void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
  int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int actual) override { return actual; }
  void STDMETHODCALLTYPE PreHeapMinimize() override {}
  void STDMETHODCALLTYPE PostHeapMinimize() override {}

 private:
  long live_ = 0;
};

void use_every_member(const Server& server) {
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  OwnedVariant digits(testing::string_variant(L"123456789"));
  OwnedVariant empty(testing::string_variant(L""));
  OwnedVariant name(testing::string_variant(L"no such file"));
  Outcome outcome;
  call(outcome, crc.get(), L"AddString", DISPATCH_METHOD, {*digits});
  call(outcome, crc.get(), L"AddString", DISPATCH_METHOD, {*empty});
  call(outcome, crc.get(), L"CalculateString", DISPATCH_METHOD, {testing::variable(&*digits)});
  call(outcome, crc.get(), L"CalculateFile", DISPATCH_METHOD, {*name});
  call(outcome, crc.get(), L"WIN64_AddCrc32", DISPATCH_METHOD, {*digits, *empty});
  call(outcome, crc.get(), L"Value", DISPATCH_PROPERTYPUT, {*digits});
  call(outcome, crc.get(), L"Value", DISPATCH_PROPERTYGET);
  ::SetErrorInfo(0, nullptr);
}

TEST(Robustness, NothingIsLeftBehind) {
  const Server server;
  static MallocSpy spy;  // stays while a block that it has seen lives
  ASSERT_EQ(::CoRegisterMallocSpy(&spy), S_OK);
  use_every_member(server);  // what the system keeps for good it keeps now
  const long before = spy.live();
  for (int round = 0; round < 50; ++round) use_every_member(server);
  EXPECT_LE(spy.live(), before) << "blocks and strings that nobody freed";

  const long after = spy.live();
  const Bstr probe(L"the spy sees strings");
  EXPECT_EQ(spy.live(), after + 1);
  ::CoRevokeMallocSpy();
  EXPECT_TRUE(server.is_idle());
}

TEST(Robustness, RefusesNamesAndReferencesToNothing) {
  const Server server;
  const auto web = server.create<IclsWebEncryption>(CLSID_clsWebEncryption);
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  wchar_t member[] = L"ENCRYPT", second[] = L"KEY", unknown[] = L"no such name";
  LPOLESTR names[] = {member, second, unknown};
  DISPID ids[3] = {};
  EXPECT_EQ(web->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
  EXPECT_EQ(ids[1], 1) << "the second parameter";
  EXPECT_EQ(web->GetIDsOfNames(IID_NULL, names, 3, 0, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[2], DISPID_UNKNOWN);
  EXPECT_EQ(web->GetIDsOfNames(IID_NULL, names + 1, 1, 0, ids), DISP_E_UNKNOWNNAME) << "a parameter is no member";
  LPOLESTR holes[] = {member, nullptr};
  EXPECT_EQ(web->GetIDsOfNames(IID_NULL, holes + 1, 1, 0, ids), E_INVALIDARG);
  EXPECT_EQ(web->GetIDsOfNames(IID_NULL, holes, 2, 0, ids), E_INVALIDARG);
  EXPECT_EQ(web->GetIDsOfNames(IID_NULL, nullptr, 1, 0, ids), E_INVALIDARG);
  EXPECT_EQ(web->GetIDsOfNames(IID_NULL, names, 1, 0, nullptr), E_INVALIDARG);
  EXPECT_EQ(web->GetIDsOfNames(IID_IDispatch, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);

  DISPPARAMS no_arguments = {};
  EXPECT_EQ(crc->Invoke(7, IID_IDispatch, 0, DISPATCH_METHOD, &no_arguments, nullptr, nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
  DISPPARAMS missing = {nullptr, nullptr, 1, 0}, unnamed = {nullptr, nullptr, 0, 1};
  for (DISPPARAMS* parameters : {&missing, &unnamed})
    EXPECT_EQ(crc->Invoke(7, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr, nullptr), E_INVALIDARG);

  OwnedVariant key(testing::string_variant(L"k")), text(testing::string_variant(L"x"));
  VARIANT nested = testing::variable(nullptr), twice = testing::variable(&nested);
  Outcome outcome;
  for (const int type : {+VT_BSTR, +VT_VARIANT, +VT_I4, +VT_DISPATCH, VT_ARRAY | VT_UI1, VT_ARRAY | VT_VARIANT}) {
    VARIANT nothing = testing::variable(nullptr);
    nothing.vt = static_cast<VARTYPE>(VT_BYREF | type);
    for (const VARIANT& argument : {nothing, testing::variable(&nothing), nested, twice}) {
      for (const wchar_t* changing : {L"Encrypt", L"Decrypt"}) {
        call(outcome, web.get(), changing, DISPATCH_METHOD, {argument, *key});
        EXPECT_EQ(outcome.result, E_INVALIDARG) << type;
      }
      call(outcome, web.get(), L"Encrypt", DISPATCH_METHOD, {*text, argument});
      EXPECT_EQ(outcome.result, E_INVALIDARG) << type;
      call(outcome, web.get(), L"bsEncode", DISPATCH_METHOD, {argument});
      EXPECT_EQ(outcome.result, E_INVALIDARG) << type;
      call(outcome, crc.get(), L"Value", DISPATCH_PROPERTYPUT, {argument});
      EXPECT_EQ(outcome.result, E_INVALIDARG) << type;
      EXPECT_EQ(static_cast<ULONG>(crc->put_Value(argument)), 0x800A000Du) << type;
    }
  }
  call(outcome, crc.get(), L"Clear", DISPATCH_METHOD, {*key});
  EXPECT_EQ(outcome.result, DISP_E_BADPARAMCOUNT);
}

TEST(Robustness, RefusesArraysWithImpossibleBoundsOrNoData) {
  const Server server;
  const auto web = server.create<IclsWebEncryption>(CLSID_clsWebEncryption);
  for (const VARENUM element : {VT_UI1, VT_VARIANT}) {
    OwnedVariant bytes;
    bytes->vt = static_cast<VARTYPE>(VT_ARRAY | element);
    bytes->parray = ::SafeArrayCreateVector(static_cast<VARTYPE>(element), 0, 2);
    void* const data = bytes->parray->pvData;
    Outcome outcome;
    const auto expect_refusal = [&](const char* why) {
      for (const VARIANT& form : {*bytes, testing::variable(bytes.get())}) {
        call(outcome, web.get(), L"bsEncode", DISPATCH_METHOD, {form});
        EXPECT_TRUE(outcome.result == DISP_E_TYPEMISMATCH || outcome.error == static_cast<HRESULT>(0x800A000D))
            << why << outcome.result;
      }
    };
    bytes->parray->rgsabound[0].lLbound = 0x7FFFFFFF;
    expect_refusal("the second element has no index");
    bytes->parray->rgsabound[0].lLbound = 0x7FFFFFFE;
    call(outcome, web.get(), L"bsEncode", DISPATCH_METHOD, {*bytes});
    EXPECT_EQ(outcome.result, S_OK);
    bytes->parray->pvData = nullptr;
    expect_refusal("no data");
    bytes->parray->pvData = data;
  }
}

}  // namespace
}  // namespace tornby
