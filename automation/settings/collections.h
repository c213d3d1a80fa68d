// Collections that members of other classes return.
#pragma once

#include "automation/com/com.h"
#include "settings/ValueCollection.h"
#include "tornby_idl.h"

namespace tornby::automation {

/// Objects around the collections.
ComPtr<IStringCollection> make_object(StringCollection strings);
ComPtr<IValueCollection> make_object(tornby::ValueCollection values);

}  // namespace tornby::automation
