#include "platform/profile.h"

namespace tornby {
namespace {

class NoProfileFiles final : public ProfileFiles {
 public:
  String folder(std::size_t) override { return {}; }
  String read_text(StringView, StringView, StringView, std::size_t) override { return {}; }
  std::int32_t read_number(StringView, StringView, StringView, std::int32_t otherwise) override { return otherwise; }
  bool write_text(StringView, StringView, StringView, StringView) override { return false; }
};

}  // namespace

ProfileFiles& native_profile_files() {
  static NoProfileFiles profiles;
  return profiles;
}

}  // namespace tornby
