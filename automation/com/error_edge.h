// The edge of the DLL: no exception crosses it.
#pragma once

#include <exception>

#include "automation/com/com.h"

namespace tornby::automation {

/// A failure that a COM call reported, or that has no run-time error of its own, such as a null argument (E_POINTER).
class ComError : public std::exception {
 public:
  explicit ComError(HRESULT result) : result_(result) {}
  HRESULT result() const noexcept { return result_; }
  const char* what() const noexcept override { return "a COM call failed"; }

 private:
  HRESULT result_;
};

/// The HRESULT for the exception in flight, with number, description and source left in the thread's IErrorInfo.
/// Run-time error n travels as 0x800A0000 + n, so that a script's Err.Number is n; class-defined errors as they are.
/// To be called inside a catch clause.
HRESULT report_exception(REFIID iid, const wchar_t* source) noexcept;

/// Runs `action`; S_OK, or what report_exception makes of the exception.
template <class Action>
HRESULT guarded(REFIID iid, const wchar_t* source, Action&& action) noexcept {
  try {
    action();
    return S_OK;
  } catch (...) {
    return report_exception(iid, source);
  }
}

}  // namespace tornby::automation
