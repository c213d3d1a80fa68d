// What the running process can ask about itself.
#pragma once

namespace tornby {

class Process {
 public:
  virtual ~Process() = default;

  /// True in a 32-bit process on 64-bit Windows. False everywhere else, and when the system does not tell.
  virtual bool is_wow64() const = 0;
};

const Process& native_process();

}  // namespace tornby
