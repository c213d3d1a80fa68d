#include "platform/module.h"

#include <filesystem>

namespace tornby {
namespace {

/// The running program; of a shared library that this code is part of the system says nothing.
class PosixModule final : public Module {
 public:
  String folder() const override { return path().parent_path().u16string(); }
  String name() const override { return path().stem().u16string(); }
  ModuleVersion version() const override { return {name(), {}, {}}; }

 private:
  static std::filesystem::path path() {
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown);
  }
};

}  // namespace

const Module& native_module() {
  static const PosixModule module;
  return module;
}

}  // namespace tornby
