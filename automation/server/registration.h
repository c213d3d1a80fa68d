// Registration of all classes and of the type library.
#pragma once

namespace tornby::automation {

enum class Scope {
  machine,  // HKEY_LOCAL_MACHINE, for every user; needs an administrator
  user,     // HKEY_CURRENT_USER
};

/// Writes the registry entries of every class in the table. When something fails, what was written is taken back.
void register_classes(Scope scope);

/// Removes what register_classes wrote, also when only part of it is there. Names that the DLL of the other word size
/// still uses stay.
void unregister_classes(Scope scope);

}  // namespace tornby::automation
