// What a container offers its controls, read with care: some offer nothing, and some give what nobody expects.
#pragma once

#include <optional>

#include "automation/com/com.h"
#include "controls/host.h"

namespace tornby::automation {

class AmbientProperties {
 public:
  /// Null, or a site without properties, offers nothing.
  void take_from(IUnknown* site);

  // For the control, whose host compares them later. A value of a type that makes no sense is none.
  Font font() const;
  std::optional<Color> back_color() const { return given_.back_color = color(DISPID_AMBIENT_BACKCOLOR); }
  std::optional<Color> fore_color() const { return given_.fore_color = color(DISPID_AMBIENT_FORECOLOR); }
  std::optional<std::int16_t> appearance() const;
  String display_name() const;

  // Each is asked for once, until it changes.
  bool in_design() const { return !flag(user_mode_, DISPID_AMBIENT_USERMODE, true); }
  bool right_to_left() const { return flag(right_to_left_, DISPID_AMBIENT_RIGHTTOLEFT, false); }
  bool displays_as_default() const { return flag(as_default_, DISPID_AMBIENT_DISPLAYASDEFAULT, false); }

  /// What the control was given, as far as it has asked.
  const Ambients& given() const { return given_; }
  /// That property, or each for DISPID_UNKNOWN, has another value. False when no control has a use for it.
  bool refresh(DISPID property);

 private:
  bool read(DISPID property, VARIANT* value) const;
  std::optional<std::int32_t> number(DISPID property) const;
  std::optional<Color> color(DISPID property) const;
  bool flag(std::optional<bool>& known, DISPID property, bool otherwise) const;

  ComPtr<IDispatch> source_;
  mutable Ambients given_;
  mutable std::optional<bool> user_mode_, right_to_left_, as_default_;
};

}  // namespace tornby::automation
