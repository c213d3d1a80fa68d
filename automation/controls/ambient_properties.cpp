#include "automation/controls/ambient_properties.h"

#include "automation/com/convert.h"
#include "automation/controls/ole_values.h"

namespace tornby::automation {

void AmbientProperties::take_from(IUnknown* site) {
  source_ = ComPtr<IDispatch>();
  user_mode_ = right_to_left_ = as_default_ = std::nullopt;
  if (site) site->QueryInterface(IID_IDispatch, source_.out_void());
}

Font AmbientProperties::font() const {
  given_.font = Font();
  OwnedVariant value;
  if (!read(DISPID_AMBIENT_FONT, value.get()) || (value->vt != VT_DISPATCH && value->vt != VT_UNKNOWN) ||
      !value->punkVal)
    return *given_.font;
  try {
    given_.font = describe_font(value->punkVal);
  } catch (const std::exception&) {
    // What the container calls a font is none.
  }
  return *given_.font;
}

std::optional<std::int16_t> AmbientProperties::appearance() const {
  const auto offered = number(DISPID_AMBIENT_APPEARANCE);
  const bool known = offered && (*offered == 0 || *offered == 1);
  return given_.appearance = known ? std::optional(static_cast<std::int16_t>(*offered)) : std::nullopt;
}

String AmbientProperties::display_name() const {
  OwnedVariant value;
  if (!read(DISPID_AMBIENT_DISPLAYNAME, value.get()) || value->vt != VT_BSTR) return String();
  return String(view(value->bstrVal));
}

bool AmbientProperties::refresh(DISPID property) {
  bool useful = false;
  const auto changed = [&](DISPID one) {
    const bool is_it = property == one || property == DISPID_UNKNOWN;
    useful |= is_it;
    return is_it;
  };
  if (changed(DISPID_AMBIENT_USERMODE)) user_mode_.reset();
  if (changed(DISPID_AMBIENT_RIGHTTOLEFT)) right_to_left_.reset();
  if (changed(DISPID_AMBIENT_DISPLAYASDEFAULT)) as_default_.reset();
  if (changed(DISPID_AMBIENT_FONT) && given_.font) font();
  if (changed(DISPID_AMBIENT_BACKCOLOR) && given_.back_color) back_color();
  if (changed(DISPID_AMBIENT_FORECOLOR) && given_.fore_color) fore_color();
  if (changed(DISPID_AMBIENT_APPEARANCE) && given_.appearance) appearance();
  return useful;
}

bool AmbientProperties::read(DISPID property, VARIANT* value) const {
  const ComPtr<IDispatch> source = source_;  // the container may let go of the control meanwhile
  DISPPARAMS none = {};
  return source && SUCCEEDED(source->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value,
                                            nullptr, nullptr));
}

std::optional<std::int32_t> AmbientProperties::number(DISPID property) const {
  OwnedVariant value;
  if (!read(property, value.get())) return {};
  switch (value->vt) {
    case VT_BOOL:
      return from_boolean(value->boolVal);
    case VT_I2:
      return value->iVal;
    case VT_I4:
    case VT_INT:
    case VT_UI4:
    case VT_UINT:
      return value->lVal;
    default:
      return {};
  }
}

std::optional<Color> AmbientProperties::color(DISPID property) const {
  const auto value = number(property);
  return value ? std::optional(static_cast<Color>(*value)) : std::nullopt;
}

bool AmbientProperties::flag(std::optional<bool>& known, DISPID property, bool otherwise) const {
  if (!known) known = number(property).value_or(otherwise) != 0;
  return *known;
}

}  // namespace tornby::automation
