// An object whose properties the page shows and changes.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include "automation/controls/pages/page_property.h"

namespace tornby::automation {

/// A value that a property does not take, and why, in words for the user.
class RefusedValue : public std::exception {
 public:
  RefusedValue(HRESULT result, std::wstring reason) : result_(result), reason_(std::move(reason)) {}
  HRESULT result() const noexcept { return result_; }
  const std::wstring& reason() const noexcept { return reason_; }
  const char* what() const noexcept override { return "a property does not take a value"; }

 private:
  HRESULT result_;
  std::wstring reason_;
};

/// Values are texts here: those of numbers are decimal, of flags "-1" and "0".
class EditedObject {
 public:
  /// Raises E_NOINTERFACE for an object that cannot be called by name.
  explicit EditedObject(IUnknown* object);

  std::vector<PageProperty> properties() const;
  std::wstring read(const PageProperty& property) const;
  void write(const PageProperty& property, const std::wstring& value) const;

  /// Lets it show what was written, where it waits to be told.
  void lay_out() const;

  /// Connects a sink to the object's notices of changes, if it gives any.
  void advise(IPropertyNotifySink* sink);
  void unadvise();

 private:
  DISPID id_of(const PageProperty& property) const;

  ComPtr<IDispatch> object_;
  ComPtr<IConnectionPoint> notices_;
  DWORD cookie_ = 0;
};

/// The value as the property's type has it; raises RefusedValue for a text that is no number, or none of that type.
VARIANT parse_value(const PageProperty& property, const std::wstring& value);

}  // namespace tornby::automation
