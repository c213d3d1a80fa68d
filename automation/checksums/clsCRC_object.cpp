#include "checksums/clsCRC.h"

#include "automation/com/dispatch_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class CrcObject final : public DispatchObject<IclsCRC> {
 public:
  CrcObject() : DispatchObject(L"Tornby.clsCRC", CLSID_clsCRC) {}

  STDMETHODIMP WIN64_AddCrc32(BSTR text, LONG crc, LONG* result) override {
    return answer(result, [&] { return crc_.WIN64_AddCrc32(view(text), crc); });
  }
  STDMETHODIMP AddString(BSTR text, VARIANT* result) override {
    return answer(result, [&] { return crc_.AddString(view(text)); });
  }
  STDMETHODIMP get_Algorithm(LONG* result) override {
    return answer(result, [&] { return crc_.Algorithm(); });
  }
  STDMETHODIMP put_Algorithm(LONG value) override {
    return act([&] { crc_.Algorithm(value); });
  }
  STDMETHODIMP CalculateFile(BSTR file_name, VARIANT* result) override {
    return answer(result, [&] { return crc_.CalculateFile(view(file_name)); });
  }
  STDMETHODIMP CalculateString(BSTR text, VARIANT* result) override {
    return answer(result, [&] { return crc_.CalculateString(view(text)); });
  }
  STDMETHODIMP get_Value(VARIANT* result) override {
    return answer(result, [&] { return crc_.Value(); });
  }
  STDMETHODIMP put_Value(VARIANT value) override {
    return act([&] { crc_.Value(from_variant(value)); });
  }
  STDMETHODIMP Clear() override {
    return act([&] { crc_.Clear(); });
  }

 private:
  clsCRC crc_;
};

}  // namespace

HRESULT create_clsCRC(REFIID iid, void** object) {
  return create_object<CrcObject>(iid, object);
}

}  // namespace tornby::automation
