// How containers treat the controls.
#pragma once

#include "automation/com.h"

namespace tornby::automation {

/// Active as soon as they are seen, and told of their site before anything else.
inline constexpr DWORD control_status = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                        OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

}  // namespace tornby::automation
