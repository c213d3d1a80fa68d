#include "platform/pointer.h"

namespace tornby {
namespace {

class NoPointer final : public MousePointer {
 public:
  void show_hourglass() const override {}
  void show_default() const override {}
};

}  // namespace

const MousePointer& native_pointer() {
  static const NoPointer pointer;
  return pointer;
}

}  // namespace tornby
