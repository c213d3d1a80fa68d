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

  STDMETHODIMP get_Caption(BSTR* result) override { return read(result, &kelLabel::Caption); }
  STDMETHODIMP put_Caption(BSTR value) override { return write(value, &kelLabel::Caption); }
  STDMETHODIMP get_ForeColor(OLE_COLOR* result) override { return read(result, &kelLabel::ForeColor); }
  STDMETHODIMP put_ForeColor(OLE_COLOR value) override { return write(value, &kelLabel::ForeColor); }
  STDMETHODIMP get_Enabled(VARIANT_BOOL* result) override { return read(result, &kelLabel::Enabled); }
  STDMETHODIMP put_Enabled(VARIANT_BOOL value) override { return write(value, &kelLabel::Enabled); }
  STDMETHODIMP Refresh() override { return call(&kelLabel::Refresh); }
  STDMETHODIMP get_OverrideAutoAlign(VARIANT_BOOL* result) override {
    return read(result, &kelLabel::OverrideAutoAlign);
  }
  STDMETHODIMP put_OverrideAutoAlign(VARIANT_BOOL value) override { return write(value, &kelLabel::OverrideAutoAlign); }
  STDMETHODIMP get_Alignment(SHORT* result) override { return read(result, &kelLabel::Alignment); }
  STDMETHODIMP put_Alignment(SHORT value) override { return write(value, &kelLabel::Alignment); }
  STDMETHODIMP get_DisplayRubberBand(VARIANT_BOOL* result) override {
    return read(result, &kelLabel::DisplayRubberBand);
  }
  STDMETHODIMP put_DisplayRubberBand(VARIANT_BOOL value) override { return write(value, &kelLabel::DisplayRubberBand); }
  STDMETHODIMP get_AutoSize(VARIANT_BOOL* result) override { return read(result, &kelLabel::AutoSize); }
  STDMETHODIMP put_AutoSize(VARIANT_BOOL value) override { return write(value, &kelLabel::AutoSize); }
  STDMETHODIMP get_VerticalAlignment(LONG* result) override { return read(result, &kelLabel::VerticalAlignment); }
  STDMETHODIMP put_VerticalAlignment(LONG value) override { return write(value, &kelLabel::VerticalAlignment); }
  STDMETHODIMP get_WordWrap(VARIANT_BOOL* result) override { return read(result, &kelLabel::WordWrap); }
  STDMETHODIMP put_WordWrap(VARIANT_BOOL value) override { return write(value, &kelLabel::WordWrap); }
  STDMETHODIMP get_UseBorderLines(VARIANT_BOOL* result) override { return read(result, &kelLabel::UseBorderLines); }
  STDMETHODIMP put_UseBorderLines(VARIANT_BOOL value) override { return write(value, &kelLabel::UseBorderLines); }

 private:
  std::span<const PropertyTraits> traits() const override {
    using Page = PropertyTraits::Page;
    static constexpr PropertyTraits::Choice alignments[] = {{0, L"Left"}, {1, L"Right"}, {2, L"Centre"}};
    static constexpr PropertyTraits::Choice places[] = {{0, L"Top"}, {1, L"Centre"}, {2, L"Bottom"}};
    static constexpr PropertyTraits table[] = {
        {DISPID_BACKCOLOR, appearance_category, Page::color},
        {DISPID_FORECOLOR, appearance_category, Page::color},
        {DISPID_CAPTION, text_category},
        {DISPID_FONT, font_category, Page::font},
        {DISPID_ENABLED, behavior_category},
        {DISPID_AUTOSIZE, behavior_category},
        {1, behavior_category},
        {3, appearance_category},
        {5, behavior_category},
        {6, appearance_category},
        {2, appearance_category, Page::own, alignments},
        {4, appearance_category, Page::own, places},
    };
    return table;
  }
};

}  // namespace

HRESULT create_kelLabel(REFIID iid, void** object) {
  return create_object<LabelObject>(iid, object);
}

}  // namespace tornby::automation
