#include "automation/controls/control_core.h"

#include "automation/com/convert.h"
#include "automation/controls/ole_values.h"

namespace tornby::automation {

ControlCore::~ControlCore() {
  if (link_) link_->cut();
  if (host_) host_->detach();
}

void ControlCore::make_ready() {
  if (settings_ != Settings::none) return;
  settings_ = Settings::on_their_way;
  try {
    control().InitProperties();
    host_->lay_out();
  } catch (...) {
    settings_ = Settings::none;
    throw;
  }
  settings_ = Settings::there;
}

HRESULT ControlCore::take_settings(const std::function<void()>& read) {
  const Settings before = std::exchange(settings_, Settings::on_their_way);
  const HRESULT result = run([&] {
    read();
    host_->lay_out();
  });
  settings_ = FAILED(result) ? before : Settings::there;
  if (FAILED(result)) return result;
  dirty_ = false;
  picture_changed();
  return result;
}

HRESULT ControlCore::extent(DWORD aspect, SIZEL* himetric) {
  if (!himetric) return E_POINTER;
  *himetric = {};
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  return run([&] {
    make_ready();
    const auto in_himetric = [&](LONG pixels) { return ::MulDiv(pixels, himetric_per_inch, host_->dots_per_inch()); };
    *himetric = {in_himetric(host_->size().cx), in_himetric(host_->size().cy)};
  });
}

void ControlCore::set_extent(SIZEL himetric) {
  if (host_->window()) return;  // in place, the container follows up with SetObjectRects
  const auto in_pixels = [&](LONG length) { return ::MulDiv(length, host_->dots_per_inch(), himetric_per_inch); };
  host_->place({0, 0, in_pixels(himetric.cx), in_pixels(himetric.cy)});
}

void ControlCore::set_site(IOleClientSite* site) {
  site_ = ComPtr<IOleClientSite>(site);
  ambients_ = ComPtr<IDispatch>();
  in_design_.reset();
  control_site_ = ComPtr<IOleControlSite>();
  frame_site_ = ComPtr<ISimpleFrameSite>();
  if (!site) return;
  site->QueryInterface(IID_IDispatch, ambients_.out_void());
  site->QueryInterface(IID_IOleControlSite, control_site_.out_void());
  if (has(OLEMISC_SIMPLEFRAME)) site->QueryInterface(IID_ISimpleFrameSite, frame_site_.out_void());
}

bool ControlCore::ambient(DISPID property, VARIANT* value) const {
  DISPPARAMS none = {};
  return ambients_ && SUCCEEDED(ambients_->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                                  value, nullptr, nullptr));
}

Font ControlCore::ambient_font() const {
  given_.font = Font();
  OwnedVariant value;
  if (!ambient(DISPID_AMBIENT_FONT, value.get()) || (value->vt != VT_DISPATCH && value->vt != VT_UNKNOWN) ||
      !value->punkVal)
    return *given_.font;
  try {
    given_.font = describe_font(value->punkVal);
  } catch (const std::exception&) {
    // What the container calls a font is none.
  }
  return *given_.font;
}

std::optional<Color> ControlCore::ambient_color(DISPID property) const {
  OwnedVariant value;
  auto& given = property == DISPID_AMBIENT_BACKCOLOR ? given_.back_color : given_.fore_color;
  const bool known = ambient(property, value.get()) && (value->vt == VT_I4 || value->vt == VT_UI4);
  return given = known ? std::optional(static_cast<Color>(value->lVal)) : std::nullopt;
}

String ControlCore::display_name() const {
  OwnedVariant value;
  if (!ambient(DISPID_AMBIENT_DISPLAYNAME, value.get()) || value->vt != VT_BSTR) return String();
  return String(view(value->bstrVal));
}

bool ControlCore::in_design() const {
  if (!in_design_) {
    OwnedVariant user_mode;
    in_design_ = ambient(DISPID_AMBIENT_USERMODE, user_mode.get()) && user_mode->vt == VT_BOOL &&
                 !from_boolean(user_mode->boolVal);
  }
  return *in_design_;
}

void ControlCore::ambient_changed(DISPID property) {
  const auto concerns = [&](DISPID one) { return property == one || property == DISPID_UNKNOWN; };
  if (concerns(DISPID_AMBIENT_USERMODE)) in_design_.reset();
  const Ambients before = given_;
  if (before.font && concerns(DISPID_AMBIENT_FONT)) ambient_font();
  if (before.back_color && concerns(DISPID_AMBIENT_BACKCOLOR)) ambient_color(DISPID_AMBIENT_BACKCOLOR);
  if (before.fore_color && concerns(DISPID_AMBIENT_FORECOLOR)) ambient_color(DISPID_AMBIENT_FORECOLOR);
  if (settings_ == Settings::there) control().follow(before, Ambients(given_));
  host_->redraw();
}

void ControlCore::property_changed(StringView name) {
  if (settings_ != Settings::there) return;
  dirty_ = true;
  const DISPID id = property_id(name);
  property_notices().for_each<IPropertyNotifySink>([id](IPropertyNotifySink* sink) { sink->OnChanged(id); });
}

void ControlCore::picture_changed() {
  if (settings_ != Settings::there) return;
  picture_stale_ = true;
  if (changes_ == 0) const Change at_once(*this);
}

}  // namespace tornby::automation
