#include "automation/controls/control_form.h"

#include "controls/mnemonic.h"

namespace tornby::automation {

HRESULT ControlForm::GetControlInfo(CONTROLINFO* info) {
  if (!info) return E_POINTER;
  if (info->cb < sizeof *info) return E_INVALIDARG;
  info->hAccel = accelerators_.table();
  info->cAccel = accelerators_.count();
  info->dwFlags = has(OLEMISC_NOUIACTIVATE) ? 0 : CTRLINFO_EATS_RETURN;
  return S_OK;
}

HRESULT ControlForm::OnMnemonic(MSG*) {
  const ComPtr<IUnknown> alive(identity());
  return run([&] {
    if (!in_design()) control().activate();
  });
}

HRESULT ControlForm::OnAmbientPropertyChange(DISPID property) {
  return run([&] { ambient_changed(property); });
}

HRESULT ControlForm::FreezeEvents(BOOL freeze) {
  if (!freeze && freezes_ == 0) return E_UNEXPECTED;
  freezes_ += freeze ? 1 : -1;
  return S_OK;
}

void ControlForm::caption_changed() {
  if (!is_made()) return;
  const bool another = accelerators_.set(mnemonic(control().accessible_name()));
  if (another && control_site()) control_site()->OnControlInfoChanged();
}

}  // namespace tornby::automation
