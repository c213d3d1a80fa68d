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
    return read(result, &kelHyperLabel::UseDynamicHeight);
  }
  STDMETHODIMP put_UseDynamicHeight(VARIANT_BOOL value) override {
    return write(value, &kelHyperLabel::UseDynamicHeight);
  }
  STDMETHODIMP get_Caption(BSTR* result) override { return read(result, &kelHyperLabel::Caption); }
  STDMETHODIMP put_Caption(BSTR value) override { return write(value, &kelHyperLabel::Caption); }
  STDMETHODIMP get_Alignment(SHORT* result) override { return read(result, &kelHyperLabel::Alignment); }
  STDMETHODIMP put_Alignment(SHORT value) override { return write(value, &kelHyperLabel::Alignment); }
  STDMETHODIMP get_ClickColor(OLE_COLOR* result) override { return read(result, &kelHyperLabel::ClickColor); }
  STDMETHODIMP put_ClickColor(OLE_COLOR value) override { return write(value, &kelHyperLabel::ClickColor); }
  STDMETHODIMP get_LinkColor(OLE_COLOR* result) override { return read(result, &kelHyperLabel::LinkColor); }
  STDMETHODIMP put_LinkColor(OLE_COLOR value) override { return write(value, &kelHyperLabel::LinkColor); }
  STDMETHODIMP get_HoverColor(OLE_COLOR* result) override { return read(result, &kelHyperLabel::HoverColor); }
  STDMETHODIMP put_HoverColor(OLE_COLOR value) override { return write(value, &kelHyperLabel::HoverColor); }
  STDMETHODIMP get_Picture(IPictureDisp** result) override {
    return answer(result, [&] { return unwrap_picture(control().Picture()); });
  }
  STDMETHODIMP put_Picture(IPictureDisp* value) override { return write(value, &kelHyperLabel::Picture); }
  STDMETHODIMP putref_Picture(IPictureDisp* value) override { return put_Picture(value); }

 private:
  std::span<const PropertyTraits> traits() const override {
    using Page = PropertyTraits::Page;
    static constexpr PropertyTraits::Choice alignments[] = {{0, L"Left"}, {1, L"Right"}, {2, L"Centre"}};
    static constexpr PropertyTraits table[] = {
        {DISPID_BACKCOLOR, appearance_category, Page::color},
        {3, appearance_category, Page::color},
        {4, appearance_category, Page::color},
        {5, appearance_category, Page::color},
        {DISPID_CAPTION, text_category},
        {DISPID_FONT, font_category, Page::font},
        {6, appearance_category, Page::picture},
        {1, behavior_category},
        {2, appearance_category, Page::own, alignments},
    };
    return table;
  }
};

}  // namespace

HRESULT create_kelHyperLabel(REFIID iid, void** object) {
  return create_object<HyperLabelObject>(iid, object);
}

}  // namespace tornby::automation
