// The real file system, to be overridden operation by operation.
#pragma once

#include "platform/files.h"

namespace tornby::testing {

class ForwardingFiles : public Files {
 public:
  std::uint64_t size(StringView name) const override { return native_files().size(name); }
  std::unique_ptr<InputFile> open_for_reading(StringView name) const override {
    return native_files().open_for_reading(name);
  }
  std::unique_ptr<OutputFile> open_for_writing(StringView name) const override {
    return native_files().open_for_writing(name);
  }
  std::unique_ptr<Replacement> replace(StringView name) const override { return native_files().replace(name); }
  void set_aside(StringView name) const override { native_files().set_aside(name); }
};

}  // namespace tornby::testing
