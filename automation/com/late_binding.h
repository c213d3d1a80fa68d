// Late binding: what scripts call through IDispatch.
//
// The type library does most of it (names, conversions, defaults). Added here is what scripts need beyond that:
// - a script passes its variables by reference as variants; where a member wants a string, a number or an array by
//   reference, it gets a pointer into that variable, so that its change arrives;
// - an array of variants is taken where a member wants an array of bytes, numbers or strings;
// - an array of strings is returned as an array of variants, the only kind that scripts can look into;
// - null assigned to a property that holds an object clears it.
#pragma once

#include "automation/com/com.h"

namespace tornby::automation {

class LateBinding {
 public:
  explicit LateBinding(REFIID interface_id) : interface_id_(interface_id) {}

  /// The interface's description, loaded when first asked for.
  ComPtr<ITypeInfo> type_info();

  HRESULT find(LPOLESTR* names, UINT count, DISPID* ids);

  /// `target` is the object as the interface that was named at construction.
  HRESULT invoke(IDispatch* target, DISPID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                 EXCEPINFO* exception, UINT* bad_argument);

 private:
  ComPtr<ITypeInfo2> load();
  ComPtr<ITypeInfo2> load_members();

  const IID& interface_id_;
  ComPtr<ITypeInfo2> info_;     // as the dispatch interface that is invoked
  ComPtr<ITypeInfo2> members_;  // as the interface itself: Wine finds another member's description in the former
};

}  // namespace tornby::automation
