#include "checksums/clsWebEncryption.h"

#include "automation/com/dispatch_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class WebEncryptionObject final : public DispatchObject<IclsWebEncryption> {
 public:
  WebEncryptionObject() : DispatchObject(L"Tornby.clsWebEncryption", CLSID_clsWebEncryption) {}

  STDMETHODIMP Encrypt(BSTR* text, BSTR key, BSTR* result) override {
    return change(text, result, [&](String& value) { return web_.Encrypt(value, view(key)); });
  }
  STDMETHODIMP Decrypt(BSTR* text, BSTR key, BSTR* result) override {
    return change(text, result, [&](String& value) { return web_.Decrypt(value, view(key)); });
  }
  STDMETHODIMP bsDecode(SAFEARRAY** digits, SAFEARRAY** result) override {
    return answer(result, [&] { return web_.bsDecode(LockedBytes(digits).view()); });
  }
  STDMETHODIMP bsDecodeString(BSTR text, BSTR* result) override {
    return answer(result, [&] { return web_.bsDecodeString(view(text)); });
  }
  STDMETHODIMP bsEncodeString(BSTR text, BSTR* result) override {
    return answer(result, [&] { return web_.bsEncodeString(view(text)); });
  }
  STDMETHODIMP bsEncode(SAFEARRAY** bytes, SAFEARRAY** result) override {
    return answer(result, [&] { return web_.bsEncode(LockedBytes(bytes).view()); });
  }
  STDMETHODIMP bsEncode2(SAFEARRAY** bytes, LONG count, SAFEARRAY** result) override {
    return answer(result, [&] { return web_.bsEncode2(LockedBytes(bytes).view(), count); });
  }

 private:
  clsWebEncryption web_;
};

}  // namespace

HRESULT create_clsWebEncryption(REFIID iid, void** object) {
  return create_object<WebEncryptionObject>(iid, object);
}

}  // namespace tornby::automation
