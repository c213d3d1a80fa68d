// The folders of the system itself.
#pragma once

#include <tornby/base/text.h>

namespace tornby {

class Folders {
 public:
  virtual ~Folders() = default;

  /// The Windows directory, such as "C:\WINDOWS". Empty where there is none, and when it is longer than 254 characters.
  virtual String windows() const = 0;

  /// The system directory, such as "C:\WINDOWS\system32"; the same holds.
  virtual String system() const = 0;
};

/// Those of Windows; elsewhere both are empty.
const Folders& native_folders();

}  // namespace tornby
