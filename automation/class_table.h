// The classes that the DLL offers.
#pragma once

#include <span>

#include "automation/com.h"

namespace tornby::automation {

struct ClassEntry {
  const wchar_t* name;         // as in "Tornby.<name>"
  const wchar_t* clsid;        // as in "{01234567-...}"
  const wchar_t* description;  // as registries and object browsers show it
  HRESULT (*create)(REFIID iid, void** object);
  bool is_control;

  CLSID id() const;
};

std::span<const ClassEntry> class_table();

/// Null for a class that the DLL does not have.
const ClassEntry* find_class(REFCLSID clsid);

}  // namespace tornby::automation
