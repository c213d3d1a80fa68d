#include "controls/kelBrowseButton.h"

#include "automation/controls/control_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class BrowseButtonObject final : public ControlObject<IkelBrowseButton, DkelBrowseButtonEvents, kelBrowseButton> {
 public:
  BrowseButtonObject() : ControlObject(L"Tornby.kelBrowseButton", CLSID_kelBrowseButton) {
    control_as_made().KeyDown = raising_key(DISPID_KEYDOWN);
    control_as_made().MouseUp = raising_number(1);
    control_as_made().InfoClick = raising(2);
    control_as_made().KeyUp = raising_key(DISPID_KEYUP);
    control_as_made().ControlClick = raising(3);
    control_as_made().DblClick = raising(DISPID_DBLCLICK);
    control_as_made().Click = raising(DISPID_CLICK);
    control_as_made().KeyPress = raising_number(DISPID_KEYPRESS);
    control_as_made().ChangeText = raising_text(4);
    control_as_made().OpenBrowse = raising(5);
  }

  STDMETHODIMP get_Text(BSTR* result) override { return read(result, &kelBrowseButton::Text); }
  STDMETHODIMP put_Text(BSTR value) override { return write(value, &kelBrowseButton::Text); }
  STDMETHODIMP get_Enabled(VARIANT_BOOL* result) override { return read(result, &kelBrowseButton::Enabled); }
  STDMETHODIMP put_Enabled(VARIANT_BOOL value) override { return write(value, &kelBrowseButton::Enabled); }
  STDMETHODIMP get_BorderApperance(SHORT* result) override { return read(result, &kelBrowseButton::BorderApperance); }
  STDMETHODIMP put_BorderApperance(SHORT value) override { return write(value, &kelBrowseButton::BorderApperance); }
  STDMETHODIMP get_Locked(VARIANT_BOOL* result) override { return read(result, &kelBrowseButton::Locked); }
  STDMETHODIMP put_Locked(VARIANT_BOOL value) override { return write(value, &kelBrowseButton::Locked); }
  STDMETHODIMP get_MaxLength(LONG* result) override { return read(result, &kelBrowseButton::MaxLength); }
  STDMETHODIMP put_MaxLength(LONG value) override { return write(value, &kelBrowseButton::MaxLength); }
  STDMETHODIMP get_ReadOnly(VARIANT_BOOL* result) override { return read(result, &kelBrowseButton::ReadOnly); }
  STDMETHODIMP put_ReadOnly(VARIANT_BOOL value) override { return write(value, &kelBrowseButton::ReadOnly); }
  STDMETHODIMP get_Style(LONG* result) override { return read(result, &kelBrowseButton::Style); }
  STDMETHODIMP put_Style(LONG value) override { return write(value, &kelBrowseButton::Style); }
  STDMETHODIMP setOver() override { return call(&kelBrowseButton::setOver); }
  STDMETHODIMP setOut() override { return call(&kelBrowseButton::setOut); }
  STDMETHODIMP setDown() override { return call(&kelBrowseButton::setDown); }
  STDMETHODIMP InitialiseRect() override { return call(&kelBrowseButton::InitialiseRect); }
  STDMETHODIMP PaintButton() override { return call(&kelBrowseButton::PaintButton); }
  STDMETHODIMP DrawNormalFocus(VARIANT_BOOL down) override { return write(down, &kelBrowseButton::DrawNormalFocus); }

 private:
  std::span<const PropertyTraits> traits() const override {
    using Page = PropertyTraits::Page;
    static constexpr PropertyTraits::Choice borders[] = {{0, L"Flat"}, {1, L"Three-dimensional"}};
    static constexpr PropertyTraits::Choice styles[] = {{0, L"Flush"}, {1, L"Inset"}};
    static constexpr PropertyTraits table[] = {
        {DISPID_BACKCOLOR, appearance_category, Page::color},
        {DISPID_TEXT, text_category},
        {DISPID_FONT, font_category, Page::font},
        {1, appearance_category, Page::own, borders},
        {5, appearance_category, Page::own, styles},
        {DISPID_ENABLED, behavior_category},
        {2, behavior_category},
        {3, behavior_category},
        {4, behavior_category},
    };
    return table;
  }
};

}  // namespace

HRESULT create_kelBrowseButton(REFIID iid, void** object) {
  return create_object<BrowseButtonObject>(iid, object);
}

}  // namespace tornby::automation
