#include "automation/class_table.h"

#include "automation/error_edge.h"

namespace tornby::automation {

// Each class object's source defines its own.
#define TORNBY_CLASS(name, clsid, description) HRESULT create_##name(REFIID iid, void** object);
#include "automation/classes.inc"
#undef TORNBY_CLASS

namespace {

#define TORNBY_CLASS(name, clsid, description) {L"" #name, L"" clsid, L"" description, create_##name, false},
#define TORNBY_CONTROL(name, clsid, description) {L"" #name, L"" clsid, L"" description, create_##name, true},
constexpr ClassEntry table[] = {
#include "automation/classes.inc"
};
#undef TORNBY_CLASS

}  // namespace

CLSID ClassEntry::id() const {
  CLSID id{};
  check(::CLSIDFromString(clsid, &id));
  return id;
}

std::span<const ClassEntry> class_table() {
  return table;
}

const ClassEntry* find_class(REFCLSID clsid) {
  for (const ClassEntry& entry : table)
    if (entry.id() == clsid) return &entry;
  return nullptr;
}

}  // namespace tornby::automation
