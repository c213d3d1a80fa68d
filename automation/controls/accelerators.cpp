#include "automation/controls/accelerators.h"

namespace tornby::automation {

bool Accelerators::set(char16_t mnemonic) {
  if (mnemonic == mnemonic_) return false;
  mnemonic_ = mnemonic;
  table_.reset();
  if (mnemonic == 0) return true;
  // Containers look up the character that the key together with Alt gives.
  wchar_t letters[entries] = {static_cast<wchar_t>(mnemonic), static_cast<wchar_t>(mnemonic)};
  ::CharLowerBuffW(&letters[0], 1);
  ::CharUpperBuffW(&letters[1], 1);
  ACCEL accelerators[entries] = {};
  for (int i = 0; i < entries; ++i) accelerators[i] = {FALT, static_cast<WORD>(letters[i]), 1};
  table_.reset(::CreateAcceleratorTableW(accelerators, entries));
  return true;
}

}  // namespace tornby::automation
