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
  ambients_.take_from(site);
  control_site_ = ComPtr<IOleControlSite>();
  frame_site_ = ComPtr<ISimpleFrameSite>();
  if (!site) return;
  site->QueryInterface(IID_IOleControlSite, control_site_.out_void());
  if (has(OLEMISC_SIMPLEFRAME)) site->QueryInterface(IID_ISimpleFrameSite, frame_site_.out_void());
  if (host_->window()) host_->form_changed();
}

void ControlCore::ambient_changed(DISPID property) {
  const Ambients before = ambients_.given();
  if (!ambients_.refresh(property)) return;
  if (settings_ == Settings::there) control().follow(before, Ambients(ambients_.given()));
  host_->form_changed();
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
