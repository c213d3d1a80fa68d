// One file of which only what the script says is true.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "base/runtime_error.h"
#include "support/forwarding_files.h"

namespace tornby::testing {

class ScriptedFile final : public ForwardingFiles {
 public:
  /// It reads as many letters "a" as stand in `reads` for each reading, and then fails.
  ScriptedFile(std::uint64_t size, std::vector<std::size_t> reads) : size_(size), reads_(std::move(reads)) {}

  mutable int left_open = 0;
  mutable int closed = 0;

  std::uint64_t size(StringView) const override { return size_; }
  std::unique_ptr<InputFile> open_for_reading(StringView) const override { return std::make_unique<Open>(*this); }

 private:
  class Open final : public InputFile {
   public:
    explicit Open(const ScriptedFile& file) : file_(file) {}
    ~Open() override { ++(left_open_ ? file_.left_open : file_.closed); }
    std::uint64_t size() const override { return file_.size_; }
    std::size_t read(std::span<std::uint8_t> out) override {
      if (next_ == file_.reads_.size()) throw RuntimeError(StandardError::device_io_error);
      const std::size_t got = std::min(file_.reads_[next_++], out.size());
      std::fill_n(out.begin(), got, std::uint8_t{'a'});
      return got;
    }
    void leave_open() override { left_open_ = true; }

   private:
    const ScriptedFile& file_;
    std::size_t next_ = 0;
    bool left_open_ = false;
  };
  std::uint64_t size_;
  std::vector<std::size_t> reads_;
};

}  // namespace tornby::testing
