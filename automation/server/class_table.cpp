#include "automation/server/class_table.h"

#include <initializer_list>

#include "automation/com/error_edge.h"

namespace tornby::automation {

// Each class object's source defines its own.
#define TORNBY_CLASS(name, clsid, description) HRESULT create_##name(REFIID iid, void** object);
#define TORNBY_PAGE TORNBY_CLASS
#include "automation/server/classes.inc"
#undef TORNBY_CLASS

namespace {

// The names that manifests give to the OLEMISC bits.
constexpr DWORD recomposeonresize = OLEMISC_RECOMPOSEONRESIZE;
constexpr DWORD cantlinkinside = OLEMISC_CANTLINKINSIDE;
constexpr DWORD insideout = OLEMISC_INSIDEOUT;
constexpr DWORD activatewhenvisible = OLEMISC_ACTIVATEWHENVISIBLE;
constexpr DWORD actslikelabel = OLEMISC_ACTSLIKELABEL;
constexpr DWORD nouiactivate = OLEMISC_NOUIACTIVATE;
constexpr DWORD simpleframe = OLEMISC_SIMPLEFRAME;
constexpr DWORD setclientsitefirst = OLEMISC_SETCLIENTSITEFIRST;

constexpr DWORD sum(std::initializer_list<DWORD> bits) {
  DWORD result = 0;
  for (const DWORD bit : bits) result |= bit;
  return result;
}

#define TORNBY_CLASS(name, clsid, description) {L"" #name, L"" clsid, L"" description, create_##name},
#define TORNBY_CONTROL(name, clsid, description, picture, ...) \
  {L"" #name, L"" clsid, L"" description, create_##name, picture, sum({__VA_ARGS__})},
#define TORNBY_PAGE(name, clsid, description) {L"" #name, L"" clsid, L"" description, create_##name, 0, 0, true},
constexpr ClassEntry table[] = {
#include "automation/server/classes.inc"
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
