#include "controls/kelLabel.h"

#include "automation/controls/control_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class LabelObject final : public ControlObject<IkelLabel, DkelLabelEvents, kelLabel> {
 public:
  LabelObject() : ControlObject(L"Tornby.kelLabel", CLSID_kelLabel) {
    control_as_made().InfoClick = raising(1);
    control_as_made().MouseUp = raising_number(2);
  }

  STDMETHODIMP get_Caption(BSTR* result) override {
    return answer(result, [&] { return control().Caption(); });
  }
  STDMETHODIMP put_Caption(BSTR value) override {
    return act([&] { control().Caption(view(value)); });
  }
  STDMETHODIMP get_ForeColor(OLE_COLOR* result) override {
    return answer(result, [&] { return control().ForeColor(); });
  }
  STDMETHODIMP put_ForeColor(OLE_COLOR value) override {
    return act([&] { control().ForeColor(static_cast<Color>(value)); });
  }
  STDMETHODIMP get_Enabled(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().Enabled(); });
  }
  STDMETHODIMP put_Enabled(VARIANT_BOOL value) override {
    return act([&] { control().Enabled(from_boolean(value)); });
  }
  STDMETHODIMP Refresh() override {
    return act([&] { control().Refresh(); });
  }
  STDMETHODIMP get_OverrideAutoAlign(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().OverrideAutoAlign(); });
  }
  STDMETHODIMP put_OverrideAutoAlign(VARIANT_BOOL value) override {
    return act([&] { control().OverrideAutoAlign(from_boolean(value)); });
  }
  STDMETHODIMP get_Alignment(SHORT* result) override {
    return answer(result, [&] { return control().Alignment(); });
  }
  STDMETHODIMP put_Alignment(SHORT value) override {
    return act([&] { control().Alignment(value); });
  }
  STDMETHODIMP get_DisplayRubberBand(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().DisplayRubberBand(); });
  }
  STDMETHODIMP put_DisplayRubberBand(VARIANT_BOOL value) override {
    return act([&] { control().DisplayRubberBand(from_boolean(value)); });
  }
  STDMETHODIMP get_AutoSize(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().AutoSize(); });
  }
  STDMETHODIMP put_AutoSize(VARIANT_BOOL value) override {
    return act([&] { control().AutoSize(from_boolean(value)); });
  }
  STDMETHODIMP get_VerticalAlignment(LONG* result) override {
    return answer(result, [&] { return control().VerticalAlignment(); });
  }
  STDMETHODIMP put_VerticalAlignment(LONG value) override {
    return act([&] { control().VerticalAlignment(value); });
  }
  STDMETHODIMP get_WordWrap(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().WordWrap(); });
  }
  STDMETHODIMP put_WordWrap(VARIANT_BOOL value) override {
    return act([&] { control().WordWrap(from_boolean(value)); });
  }
  STDMETHODIMP get_UseBorderLines(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().UseBorderLines(); });
  }
  STDMETHODIMP put_UseBorderLines(VARIANT_BOOL value) override {
    return act([&] { control().UseBorderLines(from_boolean(value)); });
  }
};

}  // namespace

HRESULT create_kelLabel(REFIID iid, void** object) {
  return create_object<LabelObject>(iid, object);
}

}  // namespace tornby::automation
