#include "controls/kelHyperLabel.h"

#include "automation/controls/control_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class HyperLabelObject final : public ControlObject<IkelHyperLabel, DkelHyperLabelEvents, kelHyperLabel> {
 public:
  HyperLabelObject() : ControlObject(L"Tornby.kelHyperLabel", CLSID_kelHyperLabel) {
    control_as_made().InfoClick = raising(1);
    control_as_made().MouseUp = raising_number(2);
    control_as_made().Click = raising(DISPID_CLICK);
  }

  STDMETHODIMP get_UseDynamicHeight(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().UseDynamicHeight(); });
  }
  STDMETHODIMP put_UseDynamicHeight(VARIANT_BOOL value) override {
    return act([&] { control().UseDynamicHeight(from_boolean(value)); });
  }
  STDMETHODIMP get_Caption(BSTR* result) override {
    return answer(result, [&] { return control().Caption(); });
  }
  STDMETHODIMP put_Caption(BSTR value) override {
    return act([&] { control().Caption(view(value)); });
  }
  STDMETHODIMP get_Alignment(SHORT* result) override {
    return answer(result, [&] { return control().Alignment(); });
  }
  STDMETHODIMP put_Alignment(SHORT value) override {
    return act([&] { control().Alignment(value); });
  }
  STDMETHODIMP get_ClickColor(OLE_COLOR* result) override {
    return answer(result, [&] { return control().ClickColor(); });
  }
  STDMETHODIMP put_ClickColor(OLE_COLOR value) override {
    return act([&] { control().ClickColor(static_cast<Color>(value)); });
  }
  STDMETHODIMP get_LinkColor(OLE_COLOR* result) override {
    return answer(result, [&] { return control().LinkColor(); });
  }
  STDMETHODIMP put_LinkColor(OLE_COLOR value) override {
    return act([&] { control().LinkColor(static_cast<Color>(value)); });
  }
  STDMETHODIMP get_HoverColor(OLE_COLOR* result) override {
    return answer(result, [&] { return control().HoverColor(); });
  }
  STDMETHODIMP put_HoverColor(OLE_COLOR value) override {
    return act([&] { control().HoverColor(static_cast<Color>(value)); });
  }
  STDMETHODIMP get_Picture(IPictureDisp** result) override {
    return answer(result, [&] { return unwrap_picture(control().Picture()); });
  }
  STDMETHODIMP put_Picture(IPictureDisp* value) override {
    return act([&] { control().Picture(wrap_picture(value)); });
  }
  STDMETHODIMP putref_Picture(IPictureDisp* value) override { return put_Picture(value); }
};

}  // namespace

HRESULT create_kelHyperLabel(REFIID iid, void** object) {
  return create_object<HyperLabelObject>(iid, object);
}

}  // namespace tornby::automation
