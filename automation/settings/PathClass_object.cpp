#include "settings/PathClass.h"

#include "automation/com/dispatch_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class PathObject final : public DispatchObject<IPathClass> {
 public:
  PathObject() : DispatchObject(L"Tornby.PathClass", CLSID_PathClass) {}

  STDMETHODIMP RGGetKeyValue(LONG* root_key, BSTR subkey, BSTR value_name, VARIANT* result) override {
    if (!root_key || !result) return E_POINTER;
    ::VariantInit(result);
    return act([&] {
      std::int32_t root = *root_key;
      *result = to_variant(paths_.RGGetKeyValue(root, view(subkey), view(value_name)));
      *root_key = root;
    });
  }
  STDMETHODIMP get_ApplicationData(VARIANT* result) override {
    return answer(result, [&] { return paths_.ApplicationData(); });
  }
  STDMETHODIMP get_AddTools(VARIANT* result) override {
    return answer(result, [&] { return paths_.AddTools(); });
  }
  STDMETHODIMP get_AppData(VARIANT* result) override {
    return answer(result, [&] { return paths_.AppData(); });
  }
  STDMETHODIMP get_Cache(VARIANT* result) override {
    return answer(result, [&] { return paths_.Cache(); });
  }
  STDMETHODIMP get_Cookies(VARIANT* result) override {
    return answer(result, [&] { return paths_.Cookies(); });
  }
  STDMETHODIMP get_Desktop(VARIANT* result) override {
    return answer(result, [&] { return paths_.Desktop(); });
  }
  STDMETHODIMP get_Favorites(VARIANT* result) override {
    return answer(result, [&] { return paths_.Favorites(); });
  }
  STDMETHODIMP get_Fonts(VARIANT* result) override {
    return answer(result, [&] { return paths_.Fonts(); });
  }
  STDMETHODIMP get_History(VARIANT* result) override {
    return answer(result, [&] { return paths_.History(); });
  }
  STDMETHODIMP get_LocalAppData(VARIANT* result) override {
    return answer(result, [&] { return paths_.LocalAppData(); });
  }
  STDMETHODIMP get_LocalSettings(VARIANT* result) override {
    return answer(result, [&] { return paths_.LocalSettings(); });
  }
  STDMETHODIMP get_MyPictures(VARIANT* result) override {
    return answer(result, [&] { return paths_.MyPictures(); });
  }
  STDMETHODIMP get_NetHood(VARIANT* result) override {
    return answer(result, [&] { return paths_.NetHood(); });
  }
  STDMETHODIMP get_Personal(VARIANT* result) override {
    return answer(result, [&] { return paths_.Personal(); });
  }
  STDMETHODIMP get_PrintHood(VARIANT* result) override {
    return answer(result, [&] { return paths_.PrintHood(); });
  }
  STDMETHODIMP get_Programs(VARIANT* result) override {
    return answer(result, [&] { return paths_.Programs(); });
  }
  STDMETHODIMP get_ProgramFiles(VARIANT* result) override {
    return answer(result, [&] { return paths_.ProgramFiles(); });
  }
  STDMETHODIMP get_Recent(VARIANT* result) override {
    return answer(result, [&] { return paths_.Recent(); });
  }
  STDMETHODIMP get_SendTo(VARIANT* result) override {
    return answer(result, [&] { return paths_.SendTo(); });
  }
  STDMETHODIMP get_StartMenu(VARIANT* result) override {
    return answer(result, [&] { return paths_.StartMenu(); });
  }
  STDMETHODIMP get_Startup(VARIANT* result) override {
    return answer(result, [&] { return paths_.Startup(); });
  }
  STDMETHODIMP get_Templates(VARIANT* result) override {
    return answer(result, [&] { return paths_.Templates(); });
  }
  STDMETHODIMP get_WindowsDir(VARIANT* result) override {
    return answer(result, [&] { return paths_.WindowsDir(); });
  }
  STDMETHODIMP get_WindowsSysDir(VARIANT* result) override {
    return answer(result, [&] { return paths_.WindowsSysDir(); });
  }
  STDMETHODIMP ProcessPath(BSTR* path, VARIANT_BOOL expand, BSTR* result) override {
    return change(path, result, [&](String& value) { return paths_.ProcessPath(value, from_boolean(expand)); });
  }
  STDMETHODIMP get_TemporaryFolder(BSTR* result) override {
    return answer(result, [&] { return paths_.TemporaryFolder(); });
  }

 private:
  tornby::PathClass paths_;
};

}  // namespace

HRESULT create_PathClass(REFIID iid, void** object) {
  return create_object<PathObject>(iid, object);
}

}  // namespace tornby::automation
