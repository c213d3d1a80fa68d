// The classes that the DLL offers.
#pragma once

#include <span>

#include "automation/com/com.h"

namespace tornby::automation {

struct ClassEntry {
  const wchar_t* name;         // as in "Tornby.<name>"
  const wchar_t* clsid;        // as in "{01234567-...}"
  const wchar_t* description;  // as registries and object browsers show it
  HRESULT (*create)(REFIID iid, void** object);
  int toolbox_picture = 0;  // a bitmap's resource number; 0 for a class that is no control
  DWORD misc_status = 0;    // OLEMISC bits: how containers treat the control
  bool is_page = false;     // a property page: it has no name for programs

  bool is_control() const { return toolbox_picture != 0; }

  CLSID id() const;
};

std::span<const ClassEntry> class_table();

/// Null for a class that the DLL does not have.
const ClassEntry* find_class(REFCLSID clsid);

}  // namespace tornby::automation
