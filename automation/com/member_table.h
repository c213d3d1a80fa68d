// The members of one interface as late-bound calls need them: described once, from the type library.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "automation/com/com.h"

namespace tornby::automation {

/// A parameter, by what has to be done to an argument for it.
struct Parameter {
  enum class Kind {
    value,      // the type library converts it
    reference,  // a string, number or array that the member may change
    array,
    object,
    color,  // a 32-bit number, whatever sign the caller takes it to have
  };
  Kind kind = Kind::value;
  VARTYPE type = VT_EMPTY;  // what a reference refers to; of an array and a colour, its own
};

/// One way of calling a member.
struct Member {
  DISPID id = DISPID_UNKNOWN;
  INVOKEKIND way = INVOKE_FUNC;
  std::vector<Parameter> parameters;  // without the result
  bool returns_color = false;
  std::size_t slot = 0;             // in the interface's table of functions
  VARTYPE plain_result = VT_EMPTY;  // of a property that is read without parameters: a number, a string or a variant
};

class MemberTable {
 public:
  explicit MemberTable(REFIID interface_id);

  const IID& interface_id() const { return interface_id_; }
  /// As the dispatch interface that is invoked.
  ITypeInfo* type_info() const { return info_.get(); }

  /// The member with that id, called in one of these ways; null without one.
  const Member* find(DISPID id, WORD ways) const;

  /// The ids of a member and of its parameters, as IDispatch has it. Letter case does not count.
  HRESULT find(LPOLESTR* names, UINT count, DISPID* ids) const;

 private:
  struct Name {  // in lower case, as names are compared
    DISPID id;
    std::wstring member;
    std::vector<std::wstring> parameters;
  };

  static Name names_of(ITypeInfo* info, DISPID id);
  void describe(ITypeInfo2* info);

  IID interface_id_;
  ComPtr<ITypeInfo> info_;
  std::vector<Member> members_;
  std::vector<Name> names_;  // sorted by member
};

/// The interface's table, made when first asked for and kept until the DLL may be unloaded.
std::shared_ptr<const MemberTable> member_table(REFIID interface_id);
void forget_member_tables();

}  // namespace tornby::automation
