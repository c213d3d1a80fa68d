// A control as an automation object: its dual interface, its events, and all that OleControl answers.
#pragma once

#include <array>

#include "automation/com/dispatch_object.h"
#include "automation/controls/font_property.h"
#include "automation/controls/ole_control.h"
#include "automation/controls/ole_values.h"

namespace tornby::automation {

inline void put(IFontDisp** out, ComPtr<IFontDisp> value) {
  *out = value.detach();
}
inline void put(IPictureDisp** out, ComPtr<IPictureDisp> value) {
  *out = value.detach();
}

/// Event arguments that the sink may change.
inline VARIANT by_reference(std::int16_t& value) {
  VARIANT argument;
  ::VariantInit(&argument);
  argument.vt = VT_BYREF | VT_I2;
  argument.piVal = &value;
  return argument;
}
inline VARIANT by_reference(BSTR& value) {
  VARIANT argument;
  ::VariantInit(&argument);
  argument.vt = VT_BYREF | VT_BSTR;
  argument.pbstrVal = &value;
  return argument;
}

/// Interface is the dual interface, Events the source dispinterface, C the control.
template <class Interface, class Events, class C>
class ControlObject : public DispatchObject<Interface, IConnectionPointContainer, OleControl> {
  using Base = DispatchObject<Interface, IConnectionPointContainer, OleControl>;

 public:
  ControlObject(const wchar_t* source, REFCLSID clsid) : Base(source, clsid, __uuidof(Events)) {
    this->template start<C>(clsid);
  }

  // The properties that all controls have.
  STDMETHODIMP ShowAbout() override {
    return this->act([&] { control().ShowAbout(); });
  }
  STDMETHODIMP get_BackColor(OLE_COLOR* result) override {
    return this->answer(result, [&] { return control().BackColor(); });
  }
  STDMETHODIMP put_BackColor(OLE_COLOR value) override {
    return this->act([&] { control().BackColor(static_cast<Color>(value)); });
  }
  STDMETHODIMP get_Font(IFontDisp** result) override {
    return this->answer(result, [&] { return font_.object(); });
  }
  STDMETHODIMP put_Font(IFontDisp* value) override {
    return this->act([&] { font_.assign(value); });
  }
  STDMETHODIMP putref_Font(IFontDisp* value) override { return put_Font(value); }
  STDMETHODIMP get_LastDllError(LONG* result) override {
    return this->answer(result, [&] { return static_cast<std::int32_t>(this->host().last_error()); });
  }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
    return points_.enumerate(points);
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    return points_.find(iid, point);
  }

 protected:
  C& control() {
    this->make_ready();
    return control_as_made();
  }
  /// As it is before it has any settings; its events can be connected.
  C& control_as_made() { return this->host().template control_as<C>(); }

  /// Raises an event, unless the container has frozen them.
  template <class... Arguments>
  void raise(DISPID event, Arguments... arguments) {
    const ComPtr<IUnknown> alive(identity());
    const std::array<VARIANT, sizeof...(Arguments)> values = {arguments...};
    if (!this->events_frozen()) events_.raise(event, values);
  }
  // Handlers for the control's events. They do nothing once this object is gone, which may be while the control works.
  auto raising(DISPID event) {
    return handler([event](ControlObject& self) { self.raise(event); });
  }
  auto raising_number(DISPID event) {
    return handler([event](ControlObject& self, std::int16_t& number) { self.raise(event, by_reference(number)); });
  }
  auto raising_key(DISPID event) {
    return handler([event](ControlObject& self, std::int16_t& code, std::int16_t& shift) {
      self.raise(event, by_reference(code), by_reference(shift));
    });
  }
  auto raising_text(DISPID event) {
    return handler([event](ControlObject& self, String& text) {
      BSTR value = to_bstr(text);
      self.raise(event, by_reference(value));
      text = view(value);
      ::SysFreeString(value);
    });
  }

  void* find_interface(REFIID iid) override {
    if (iid == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(this);
    return this->find_ole_interface(iid);
  }
  IUnknown* identity() override { return static_cast<Interface*>(this); }
  DISPID property_id(StringView name) override {
    String terminated(name);
    auto* text = reinterpret_cast<LPOLESTR>(terminated.data());
    DISPID id = DISPID_UNKNOWN;
    this->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    return id;
  }
  ConnectionPoint& property_notices() override { return notices_; }

 private:
  template <class Action>
  auto handler(Action action) {
    return [self = std::weak_ptr<ControlObject*>(self_), action](auto&... arguments) {
      if (const auto alive = self.lock()) action(**alive, arguments...);
    };
  }

  FontProperty font_{[this] { return control().Font(); }, [this](const Font& font) { control().Font(font); }};
  std::shared_ptr<ControlObject*> self_ = std::make_shared<ControlObject*>(this);
  ConnectionPoint events_{*this, __uuidof(Events)};
  ConnectionPoint notices_{*this, IID_IPropertyNotifySink};
  ConnectionPoints points_{{&events_, &notices_}};
};

}  // namespace tornby::automation
