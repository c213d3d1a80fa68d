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

  STDMETHODIMP get_Text(BSTR* result) override {
    return answer(result, [&] { return control().Text(); });
  }
  STDMETHODIMP put_Text(BSTR value) override {
    return act([&] { control().Text(view(value)); });
  }
  STDMETHODIMP get_Enabled(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().Enabled(); });
  }
  STDMETHODIMP put_Enabled(VARIANT_BOOL value) override {
    return act([&] { control().Enabled(from_boolean(value)); });
  }
  STDMETHODIMP get_BorderApperance(SHORT* result) override {
    return answer(result, [&] { return control().BorderApperance(); });
  }
  STDMETHODIMP put_BorderApperance(SHORT value) override {
    return act([&] { control().BorderApperance(value); });
  }
  STDMETHODIMP get_Locked(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().Locked(); });
  }
  STDMETHODIMP put_Locked(VARIANT_BOOL value) override {
    return act([&] { control().Locked(from_boolean(value)); });
  }
  STDMETHODIMP get_MaxLength(LONG* result) override {
    return answer(result, [&] { return control().MaxLength(); });
  }
  STDMETHODIMP put_MaxLength(LONG value) override {
    return act([&] { control().MaxLength(value); });
  }
  STDMETHODIMP get_ReadOnly(VARIANT_BOOL* result) override {
    return answer(result, [&] { return control().ReadOnly(); });
  }
  STDMETHODIMP put_ReadOnly(VARIANT_BOOL value) override {
    return act([&] { control().ReadOnly(from_boolean(value)); });
  }
  STDMETHODIMP get_Style(LONG* result) override {
    return answer(result, [&] { return control().Style(); });
  }
  STDMETHODIMP put_Style(LONG value) override {
    return act([&] { control().Style(value); });
  }
  STDMETHODIMP setOver() override {
    return act([&] { control().setOver(); });
  }
  STDMETHODIMP setOut() override {
    return act([&] { control().setOut(); });
  }
  STDMETHODIMP setDown() override {
    return act([&] { control().setDown(); });
  }
  STDMETHODIMP InitialiseRect() override {
    return act([&] { control().InitialiseRect(); });
  }
  STDMETHODIMP PaintButton() override {
    return act([&] { control().PaintButton(); });
  }
  STDMETHODIMP DrawNormalFocus(VARIANT_BOOL down) override {
    return act([&] { control().DrawNormalFocus(from_boolean(down)); });
  }
};

}  // namespace

HRESULT create_kelBrowseButton(REFIID iid, void** object) {
  return create_object<BrowseButtonObject>(iid, object);
}

}  // namespace tornby::automation
