// The mnemonic of a control, in the form in which containers ask for it.
#pragma once

#include <memory>
#include <type_traits>

#include "automation/com/com.h"

namespace tornby::automation {

class Accelerators {
 public:
  /// 0 for a control without a mnemonic. True when it is another one than before.
  bool set(char16_t mnemonic);

  /// Valid until the next call of set; null for none.
  HACCEL table() const { return table_.get(); }
  WORD count() const { return table_ ? entries : 0; }

 private:
  static constexpr WORD entries = 2;  // the letter in lower and in upper case
  struct Destroy {
    void operator()(HACCEL table) const { ::DestroyAcceleratorTable(table); }
  };

  char16_t mnemonic_ = 0;
  std::unique_ptr<std::remove_pointer_t<HACCEL>, Destroy> table_;
};

}  // namespace tornby::automation
