// Late binding: what scripts call through IDispatch.
//
// Names come from a table of our own, and a property without parameters is read directly; the type library's own Invoke
// does the conversions and the calls of all else. Added here is what scripts need beyond that:
// - a script passes its variables by reference as variants; where a member wants a string, a number or an array by
//   reference, it gets a pointer into that variable, so that its change arrives;
// - an array of variants is taken where a member wants an array of bytes, numbers or strings;
// - an array of strings is returned as an array of variants, the only kind that scripts can look into;
// - null assigned to a property that holds an object clears it;
// - a colour is a signed number, as scripts have them, and is taken with either sign;
// - what no caller may pass, such as a reference to nothing, is an error.
#pragma once

#include "automation/com/member_table.h"

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
  const MemberTable& table();

  const IID& interface_id_;
  std::shared_ptr<const MemberTable> table_;
};

}  // namespace tornby::automation
