// The module that this code is part of: the DLL, or the program that the library is linked into.
#pragma once

#include <array>

#include <tornby/base/text.h>

namespace tornby {

struct ModuleVersion {
  String product_name;
  std::array<unsigned, 3> numbers{};  // major, minor, revision
  String copyright;
};

class Module {
 public:
  virtual ~Module() = default;

  /// The folder of the module's file, without a closing separator unless it is a root. Empty when the system does not
  /// tell.
  virtual String folder() const = 0;

  /// The name of the module's file without folder and extension.
  virtual String name() const = 0;

  /// From the module's version resource. Without one the product has the module's name, the version 0.0.0 and no
  /// copyright.
  virtual ModuleVersion version() const = 0;
};

const Module& native_module();

}  // namespace tornby
