// The properties that the page shows, as an object's type information describes them.
#pragma once

#include <string>
#include <vector>

#include "automation/com/com.h"

namespace tornby::automation {

struct PageProperty {
  enum class Kind { text, number, choice, flag };
  struct Choice {
    LONG value;
    std::wstring name;
  };

  DISPID id;  // of the object that it was found at; others may have another
  std::wstring name;
  Kind kind;
  VARTYPE type;  // VT_BSTR, VT_I2, VT_I4 or VT_BOOL
  std::vector<Choice> choices;
  std::wstring help;       // what its definition says of it
  DWORD help_context = 0;  // where the help page does

  bool is_same(const PageProperty& other) const {
    return name == other.name && type == other.type && kind == other.kind;
  }
};

/// The texts, numbers and flags that can be read and written and are shown to users, in the order of their declaration.
/// `browsing` names the values that have names; it may be null. Colours, fonts and pictures have pages of the system's.
std::vector<PageProperty> page_properties(ITypeInfo* info, IPerPropertyBrowsing* browsing);

}  // namespace tornby::automation
