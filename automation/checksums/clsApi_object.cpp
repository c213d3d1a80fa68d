#include "checksums/clsApi.h"

#include "automation/com/dispatch_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class ApiObject final : public DispatchObject<IclsApi> {
 public:
  ApiObject() : DispatchObject(L"Tornby.clsApi", CLSID_clsApi) {}

  STDMETHODIMP apiSaveFile(BSTR file_name, BSTR text, VARIANT_BOOL* result) override {
    return answer(result, [&] { return api_.apiSaveFile(view(file_name), view(text)); });
  }
  STDMETHODIMP ApiReadFile(BSTR file_name, BSTR* result) override {
    return answer(result, [&] { return api_.ApiReadFile(view(file_name)); });
  }

 private:
  clsApi api_;
};

}  // namespace

HRESULT create_clsApi(REFIID iid, void** object) {
  return create_object<ApiObject>(iid, object);
}

}  // namespace tornby::automation
