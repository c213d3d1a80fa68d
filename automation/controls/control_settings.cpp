#include "automation/controls/control_settings.h"

#include "automation/controls/storage.h"

namespace tornby::automation {

HRESULT ControlSettings::GetClassID(CLSID* clsid) {
  if (!clsid) return E_POINTER;
  *clsid = this->clsid();
  return S_OK;
}

HRESULT ControlSettings::InitNew() {
  return take_settings([&] { control().InitProperties(); });
}

HRESULT ControlSettings::Load(LPSTREAM stream) {
  if (!stream) return E_POINTER;
  return take_settings([&] { control().ReadProperties(StreamBag::load(stream)); });
}

HRESULT ControlSettings::Save(LPSTREAM stream, BOOL clear) {
  if (!stream) return E_POINTER;
  return run([&] {
    make_ready();
    StreamBag bag;
    control().WriteProperties(bag);
    bag.save(stream);
    if (clear) clear_dirty();
  });
}

HRESULT ControlSettings::Load(IPropertyBag* bag, IErrorLog* log) {
  if (!bag) return E_POINTER;
  return take_settings([&] { control().ReadProperties(ContainerBag(bag, log)); });
}

HRESULT ControlSettings::Save(IPropertyBag* bag, BOOL clear, BOOL save_all) {
  if (!bag) return E_POINTER;
  return run([&] {
    make_ready();
    ContainerBag container(bag, nullptr, save_all != FALSE);
    control().WriteProperties(container);
    if (clear) clear_dirty();
  });
}

}  // namespace tornby::automation
