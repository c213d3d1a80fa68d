// What a form asks of a control and tells it: keys, ambient properties, whether events are wanted.
#pragma once

#include "automation/controls/accelerators.h"
#include "automation/controls/control_core.h"

namespace tornby::automation {

class ControlForm : public IOleControl, public virtual ControlCore {
 public:
  HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
  HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
  HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID property) override;
  HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

 protected:
  bool events_frozen() const { return freezes_ > 0; }
  void caption_changed() override;

 private:
  Accelerators accelerators_;
  int freezes_ = 0;
};

}  // namespace tornby::automation
