#include "platform/process.h"

namespace tornby {
namespace {

class PosixProcess final : public Process {
 public:
  bool is_wow64() const override { return false; }
};

}  // namespace

const Process& native_process() {
  static const PosixProcess process;
  return process;
}

}  // namespace tornby
