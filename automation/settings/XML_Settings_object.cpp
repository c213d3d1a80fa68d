#include "settings/XML_Settings.h"

#include "automation/com/arrays.h"
#include "automation/com/event_object.h"
#include "automation/settings/collections.h"

namespace tornby::automation {
namespace {

enum : DISPID { id_progress_max = 1, id_progress_current = 2 };

class SettingsObject final : public EventObject<IXML_Settings, DXML_SettingsEvents> {
 public:
  SettingsObject() : EventObject(L"Tornby.XML_Settings", CLSID_XML_Settings) {
    settings_.ProgressMax = [this](std::int32_t& maximum) { raise(id_progress_max, maximum); };
    settings_.ProgressCurrent = [this](std::int32_t& position) { raise(id_progress_current, position); };
  }

  STDMETHODIMP get_FileName(BSTR* result) override {
    return answer(result, [&]() -> StringView { return settings_.FileName(); });
  }
  STDMETHODIMP put_FileName(BSTR value) override {
    return act([&] { settings_.FileName(view(value)); });
  }
  STDMETHODIMP InsertGroup(BSTR group, BSTR text) override {
    return act([&] { settings_.InsertGroup(view(group), view(text)); });
  }
  STDMETHODIMP Save() override {
    return act([&] { settings_.Save(); });
  }
  STDMETHODIMP RemoveEmptyLines(BSTR text, BSTR* result) override {
    return answer(result, [&] { return tornby::XML_Settings::RemoveEmptyLines(view(text)); });
  }
  STDMETHODIMP ExtractBlock(BSTR group, IStringCollection** result) override {
    const ComPtr<IXML_Settings> alive(this);  // a sink may drop the object
    return answer(result, [&] {
      const auto items = settings_.ExtractBlock(view(group));
      return items ? make_object(std::move(*items)) : ComPtr<IStringCollection>();
    });
  }
  STDMETHODIMP ExtractBlock2(BSTR name, VARIANT_BOOL whole, IStringCollection** result) override {
    return answer(result, [&] { return make_object(settings_.ExtractBlock2(view(name), from_boolean(whole))); });
  }
  STDMETHODIMP GetSetting(BSTR group, BSTR key, BSTR default_value, BSTR* result) override {
    return answer(result, [&] { return settings_.GetSetting(view(group), view(key), view(default_value)); });
  }
  STDMETHODIMP UpdateRecent(BSTR path) override {
    const ComPtr<IXML_Settings> alive(this);
    return act([&] { settings_.UpdateRecent(view(path)); });
  }
  STDMETHODIMP ExtractRecent(SAFEARRAY** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    const ComPtr<IXML_Settings> alive(this);
    return act([&] { *result = to_string_array(settings_.ExtractRecent()); });
  }
  STDMETHODIMP SaveSetting(BSTR group, BSTR key, BSTR value) override {
    return act([&] { settings_.SaveSetting(view(group), view(key), view(value)); });
  }
  STDMETHODIMP AddNewValue(BSTR group, BSTR key, BSTR value, BSTR* block, BSTR* result) override {
    return change(block, result, [&](String& content) {
      return tornby::XML_Settings::AddNewValue(view(group), view(key), view(value), content);
    });
  }
  STDMETHODIMP SplitBlock(BSTR text, IValueCollection** result) override {
    return answer(result, [&] { return make_object(settings_.SplitBlock(view(text))); });
  }
  STDMETHODIMP SuperSplit(BSTR name, BSTR text, IStringCollection** result) override {
    return answer(result, [&] { return make_object(tornby::XML_Settings::SuperSplit(view(name), view(text))); });
  }
  STDMETHODIMP GetBlock(BSTR name, VARIANT_BOOL ignore_case, BSTR* result) override {
    return answer(result, [&] { return settings_.GetBlock(view(name), from_boolean(ignore_case)); });
  }
  STDMETHODIMP GetStructure(BSTR name, VARIANT_BOOL ignore_case, BSTR* result) override {
    return answer(result, [&] { return settings_.GetStructure(view(name), from_boolean(ignore_case)); });
  }
  STDMETHODIMP SetContents(BSTR text) override {
    return act([&] { settings_.SetContents(view(text)); });
  }
  STDMETHODIMP GetContents(BSTR* result) override {
    return answer(result, [&]() -> StringView { return settings_.GetContents(); });
  }
  STDMETHODIMP get_MaxElements(LONG* result) override {
    return answer(result, [&] { return settings_.MaxElements(); });
  }
  STDMETHODIMP FindNodes(IStringCollection** result) override {
    return answer(result, [&] { return make_object(settings_.FindNodes()); });
  }
  STDMETHODIMP GetNodeValue(BSTR tag, BSTR* result) override {
    return answer(result, [&] { return settings_.GetNodeValue(view(tag)); });
  }

 private:
  void raise(DISPID event, std::int32_t& figure) {
    LONG value = figure;
    VARIANT argument;
    ::VariantInit(&argument);
    argument.vt = VT_BYREF | VT_I4;
    argument.plVal = &value;
    events().raise(event, {&argument, 1});
    figure = value;
  }

  tornby::XML_Settings settings_;
};

}  // namespace

HRESULT create_XML_Settings(REFIID iid, void** object) {
  return create_object<SettingsObject>(iid, object);
}

}  // namespace tornby::automation
