// What a document's user may do with a control that is embedded in it, as its menu shows it: while the control runs,
// and from the registry while it sleeps.
#pragma once

#include "automation/com/com.h"

namespace tornby::automation {

struct Verb {
  LONG number;
  const wchar_t* name;
  DWORD attributes;  // OLEVERBATTRIB bits
};

constexpr LONG properties_verb = 1;
constexpr Verb control_verbs[] = {
    {OLEIVERB_PRIMARY, L"&Edit", OLEVERBATTRIB_ONCONTAINERMENU},
    {properties_verb, L"&Properties...", OLEVERBATTRIB_ONCONTAINERMENU | OLEVERBATTRIB_NEVERDIRTIES},
};

}  // namespace tornby::automation
