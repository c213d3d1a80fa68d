// The real file system, but nothing takes another file's place: every save writes over the file.
#pragma once

#include <utility>

#include "support/forwarding_files.h"

namespace tornby::testing {

class RefusingFiles final : public ForwardingFiles {
 public:
  std::unique_ptr<Replacement> replace(StringView name) const override {
    return std::make_unique<Refused>(native_files().replace(name));
  }

 private:
  class Refused final : public Replacement {
   public:
    explicit Refused(std::unique_ptr<Replacement> real) : real_(std::move(real)) {}
    void write(ByteView bytes) override { real_->write(bytes); }
    bool commit() override { return false; }
    std::size_t read(std::uint64_t position, std::span<std::uint8_t> out) override {
      return real_->read(position, out);
    }
    void keep() override { real_->keep(); }
    void done() override { real_->done(); }

   private:
    std::unique_ptr<Replacement> real_;
  };
};

}  // namespace tornby::testing
