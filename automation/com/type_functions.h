// The functions that type information lists.
#pragma once

#include "automation/com/com.h"

namespace tornby::automation {

/// Calls `visit` with the description of each function, which it may not keep.
template <class Visit>
void for_each_function(ITypeInfo* info, Visit visit) {
  FUNCDESC* function = nullptr;
  for (UINT index = 0; SUCCEEDED(info->GetFuncDesc(index, &function)); ++index) {
    const struct Owner {
      ITypeInfo* info;
      FUNCDESC* function;
      ~Owner() { info->ReleaseFuncDesc(function); }
    } owner{info, function};
    visit(*function);
  }
}

}  // namespace tornby::automation
