// All that containers ask of a control, whatever the control is: each family of interfaces is a class of its own.
#pragma once

#include "automation/controls/control_browsing.h"
#include "automation/controls/control_data.h"
#include "automation/controls/control_settings.h"

namespace tornby::automation {

class OleControl : public ControlBrowsing, public ControlSettings, public ControlData {
 protected:
  /// The interface of one of the families, not counted, or null.
  void* find_ole_interface(REFIID iid);

  void tell_of_new_picture() override {
    tell_view();
    tell_data();
  }
};

}  // namespace tornby::automation
