// A control as an automation object: its dual interface, its events, and all that OleControl answers.
#pragma once

#include <array>
#include <type_traits>

#include "automation/com/event_object.h"
#include "automation/controls/font_property.h"
#include "automation/controls/ole_control.h"
#include "automation/controls/ole_values.h"

namespace tornby::automation {

inline void put(IFontDisp** out, ComPtr<IFontDisp> value) {
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

// What a control takes from COM, by what its member wants.
template <class Value>
Value from_com(OLE_COLOR value) {
  return value;
}
template <class Value>
Value from_com(LONG value) {
  return value;
}
template <class Value>
Value from_com(SHORT value) {
  if constexpr (std::is_same_v<Value, bool>)
    return from_boolean(value);
  else
    return value;
}
template <class Value>
Value from_com(BSTR value) {
  return view(value);
}
template <class Value>
std::decay_t<Value> from_com(IPictureDisp* value) {
  return wrap_picture(value);
}

/// Interface is the dual interface, Events the source dispinterface, C the control.
template <class Interface, class Events, class C>
class ControlObject : public EventObject<Interface, Events, OleControl> {
  using Base = EventObject<Interface, Events, OleControl>;

 public:
  ControlObject(const wchar_t* source, REFCLSID clsid) : Base(source, clsid) {
    this->points().add(notices_);
    this->template start<C>(clsid);
  }

  // The properties that all controls have.
  STDMETHODIMP ShowAbout() override { return call(&C::ShowAbout); }
  STDMETHODIMP get_BackColor(OLE_COLOR* result) override { return read(result, &C::BackColor); }
  STDMETHODIMP put_BackColor(OLE_COLOR value) override { return write(value, &C::BackColor); }
  STDMETHODIMP get_Font(IFontDisp** result) override {
    return answer(result, [&] { return font_.object(); });
  }
  STDMETHODIMP put_Font(IFontDisp* value) override {
    return act([&] { font_.assign(value); });
  }
  STDMETHODIMP putref_Font(IFontDisp* value) override { return put_Font(value); }
  STDMETHODIMP get_LastDllError(LONG* result) override {
    return answer(result, [&] { return static_cast<std::int32_t>(this->host().last_error()); });
  }

 protected:
  C& control() {
    this->make_ready();
    return control_as_made();
  }
  /// As it is before it has any settings; its events can be connected.
  C& control_as_made() { return this->host().template control_as<C>(); }

  // Members of the control, each as one change of it.
  template <class Action>
  HRESULT act(Action&& action) noexcept {
    const ControlCore::Change change(*this);
    return Base::act(action);
  }
  template <class Result, class Action>
  HRESULT answer(Result* result, Action&& action) noexcept {
    const ControlCore::Change change(*this);
    return Base::answer(result, action);
  }
  template <class Result, class Value>
  HRESULT read(Result* result, Value (C::*property)() const) noexcept {
    return answer(result, [&] { return (control().*property)(); });
  }
  template <class Given, class Value>
  HRESULT write(Given given, void (C::*property)(Value)) noexcept {
    return act([&] { (control().*property)(from_com<Value>(given)); });
  }
  HRESULT call(void (C::*method)()) noexcept {
    return act([&] { (control().*method)(); });
  }

  /// Raises an event, unless the container has frozen them.
  template <class... Arguments>
  void raise(DISPID event, Arguments... arguments) {
    const ComPtr<IUnknown> alive(identity());
    const std::array<VARIANT, sizeof...(Arguments)> values = {arguments...};
    if (!this->events_frozen() && !this->in_design()) this->events().raise(event, values);
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
      OwnedVariant value;
      value->bstrVal = to_bstr(text);
      value->vt = VT_BSTR;
      self.raise(event, by_reference(value->bstrVal));
      text = view(value->bstrVal);
    });
  }

  void* find_interface(REFIID iid) override {
    void* found = Base::find_interface(iid);
    return found ? found : this->find_ole_interface(iid);
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
  ConnectionPoint& event_sinks() override { return this->events(); }

 private:
  template <class Action>
  auto handler(Action action) {
    return [self = std::weak_ptr<ControlObject*>(self_), action](auto&... arguments) {
      if (const auto alive = self.lock()) action(**alive, arguments...);
    };
  }

  void write_font(const Font& font) {
    const ControlCore::Change change(*this);
    control().Font(font);
  }

  FontProperty font_{[this] { return control().Font(); }, [this](const Font& font) { write_font(font); }};
  std::shared_ptr<ControlObject*> self_ = std::make_shared<ControlObject*>(this);
  ConnectionPoint notices_{*this, IID_IPropertyNotifySink};
};

}  // namespace tornby::automation
