// Another process, started by a test and killed by it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tornby::testing {

/// The program of that name that was built into the folder of the running one.
std::filesystem::path program_beside(const std::string& name);

class ChildProcess {
 public:
  /// The arguments hold neither blanks nor quotes.
  ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);
  ~ChildProcess() { kill(); }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Ends the process at once, with no chance to clean up, and waits until it is gone.
  void kill();

 private:
  void* process_ = nullptr;  // a handle, or the number of the process
};

}  // namespace tornby::testing
