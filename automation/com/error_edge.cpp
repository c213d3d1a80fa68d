#include "automation/com/error_edge.h"

#include <new>

#include "automation/com/convert.h"
#include "automation/com/help.h"
#include "base/runtime_error.h"

namespace tornby::automation {
namespace {

constexpr std::int32_t runtime_error_base = static_cast<std::int32_t>(0x800A0000u);

HRESULT hresult_of(const RuntimeError& error) {
  return error.number() < 0 ? error.number() : runtime_error_base + error.number();
}

/// Where the help page tells of the interface. Errors do without it where it cannot be found.
void leave_help(ICreateErrorInfo* info, REFIID iid) noexcept {
  try {
    const DWORD context = help_context(iid);
    if (context == 0 || FAILED(info->SetHelpFile(help_file().data()))) return;
    info->SetHelpContext(context);
  } catch (...) {
    // There is an error to report already.
  }
}

/// Leaves what script engines and early-bound callers show. Without memory for it, the HRESULT alone has to do.
void leave_error_info(REFIID iid, const wchar_t* source, const String& description) noexcept {
  ComPtr<ICreateErrorInfo> create;
  if (FAILED(::CreateErrorInfo(create.out()))) return;
  create->SetGUID(iid);
  create->SetSource(const_cast<wchar_t*>(source));
  create->SetDescription(const_cast<wchar_t*>(reinterpret_cast<const wchar_t*>(description.c_str())));
  leave_help(create.get(), iid);
  ComPtr<IErrorInfo> info;
  if (SUCCEEDED(create->QueryInterface(IID_IErrorInfo, info.out_void()))) ::SetErrorInfo(0, info.get());
}

HRESULT report(REFIID iid, const wchar_t* source, const RuntimeError& error) noexcept {
  leave_error_info(iid, source, error.description());
  return hresult_of(error);
}

HRESULT report(REFIID iid, const wchar_t* source, StandardError error) noexcept {
  try {
    return report(iid, source, RuntimeError(error));
  } catch (...) {
    return runtime_error_base + static_cast<std::int32_t>(error);
  }
}

}  // namespace

HRESULT report_exception(REFIID iid, const wchar_t* source) noexcept {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return report(iid, source, error);
  } catch (const ComError& error) {
    ::SetErrorInfo(0, nullptr);
    return error.result();
  } catch (const std::bad_alloc&) {
    return report(iid, source, StandardError::out_of_memory);
  } catch (...) {
    return report(iid, source, StandardError::automation_error);
  }
}

void check(HRESULT result) {
  if (FAILED(result)) throw ComError(result);
}

}  // namespace tornby::automation
