// Callers that the DLL must not trip over, and what it must not leave behind.
#include <gtest/gtest.h>

#include <string>

#include "server.h"

namespace tornby {
namespace {

using testing::Bstr;
using testing::call;
using testing::ComPtr;
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

#ifdef __i386__
/// Calls `action` with the stack `shift` bytes further down than usual, as Delphi and Visual C++ programs may.
[[gnu::noinline]] void with_stack_off_by(unsigned shift, void (*action)(void*), void* context) {
  asm volatile(
      "movl %%esp, %%ebx\n\t"
      "andl $-16, %%esp\n\t"
      "subl %%eax, %%esp\n\t"
      "pushl %%ecx\n\t"
      "call *%%edx\n\t"
      "movl %%ebx, %%esp\n\t"
      : "+a"(shift), "+c"(context), "+d"(action)
      :
      : "ebx", "memory", "cc");
}

TEST(Robustness, CallersMayAlignTheStackTo4BytesOnly) {
  const Server server;
  const auto crc = server.create<IclsCRC>(CLSID_clsCRC);
  struct Call {
    IclsCRC* crc;
    BSTR text;
    OwnedVariant value;
    HRESULT result;
  };
  const Bstr text(std::wstring(1000, L'x').c_str());
  Call context{crc.get(), text, OwnedVariant(), E_FAIL};
  ASSERT_EQ(crc->CalculateString(text, context.value.get()), S_OK);
  const LONG expected = context.value->lVal;
  for (unsigned shift = 0; shift < 16; shift += 4) {
    context.value->lVal = 0;
    with_stack_off_by(
        shift,
        [](void* pointer) {
          auto* call = static_cast<Call*>(pointer);
          call->result = call->crc->CalculateString(call->text, call->value.get());
        },
        &context);
    EXPECT_EQ(context.result, S_OK);
    EXPECT_EQ(context.value->lVal, expected) << shift;
  }
}
#endif

}  // namespace
}  // namespace tornby
