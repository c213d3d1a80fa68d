#include "checksums/clsEncryptXOR.h"

#include "automation/com/dispatch_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class EncryptXorObject final : public DispatchObject<IclsEncryptXOR> {
 public:
  EncryptXorObject() : DispatchObject(L"Tornby.clsEncryptXOR", CLSID_clsEncryptXOR) {}

  STDMETHODIMP get_Key(BSTR* result) override {
    return answer(result, [&] { return cipher_.Key(); });
  }
  STDMETHODIMP put_Key(BSTR value) override {
    return act([&] { cipher_.Key(String(view(value))); });
  }
  STDMETHODIMP Decrypt(BSTR text, BSTR* result) override {
    return answer(result, [&] { return cipher_.Decrypt(view(text)); });
  }
  STDMETHODIMP Encrypt(BSTR text, BSTR* result) override {
    return answer(result, [&] { return cipher_.Encrypt(view(text)); });
  }
  STDMETHODIMP HexDecrypt(BSTR digits, BSTR* result) override {
    return answer(result, [&] { return cipher_.HexDecrypt(view(digits)); });
  }
  STDMETHODIMP HexEncrypt(BSTR text, BSTR* result) override {
    return answer(result, [&] { return cipher_.HexEncrypt(view(text)); });
  }

 private:
  clsEncryptXOR cipher_;
};

}  // namespace

HRESULT create_clsEncryptXOR(REFIID iid, void** object) {
  return create_object<EncryptXorObject>(iid, object);
}

}  // namespace tornby::automation
