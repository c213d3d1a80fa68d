// A control as screen readers see it.
#pragma once

#include <memory>

#include "platform/windows/system.h"

namespace tornby::windows {

class WindowHost;

/// Answers WM_GETOBJECT for a control's client area: the accessible name and role of the control, and its use by
/// default action. All else is the standard answer for a window. 0 when the system gives no object.
LRESULT answer_accessible_request(const std::shared_ptr<WindowHost>& host, WPARAM wparam);

}  // namespace tornby::windows
