// The class factory: one for every class, told apart by its table entry.
#pragma once

#include "automation/server/class_table.h"

namespace tornby::automation {

/// A factory for the class of `entry`, which must outlive it.
HRESULT create_class_factory(const ClassEntry& entry, REFIID iid, void** factory);

}  // namespace tornby::automation
