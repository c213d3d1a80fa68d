#include "platform/folders.h"

namespace tornby {
namespace {

class PosixFolders final : public Folders {
 public:
  String windows() const override { return {}; }
  String system() const override { return {}; }
};

}  // namespace

const Folders& native_folders() {
  static const PosixFolders folders;
  return folders;
}

}  // namespace tornby
