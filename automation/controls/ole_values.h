// Fonts, pictures and property values between OLE and the controls.
#pragma once

#include "automation/com/com.h"
#include "controls/windows/elements.h"

namespace tornby::automation {

/// A new font object of that description.
ComPtr<IFont> make_font(const Font& font);

/// What a font object describes. Raises 91 (object variable not set) for null and 13 for an object that is no font.
Font describe_font(IUnknown* font);

/// A picture object, as the controls keep it.
class OlePicture final : public windows::DrawablePicture {
 public:
  explicit OlePicture(ComPtr<IPicture> picture) : picture_(std::move(picture)) {}

  std::int32_t width() const override;
  std::int32_t height() const override;
  void draw(HDC context, const RECT& area) const override;

  const ComPtr<IPicture>& object() const { return picture_; }

 private:
  ComPtr<IPicture> picture_;
};

/// Null for null and for an empty picture. Raises 13 (type mismatch) for an object that is no picture.
PicturePointer wrap_picture(IUnknown* picture);

/// The object behind a picture that wrap_picture made; null for no picture.
ComPtr<IPictureDisp> unwrap_picture(const PicturePointer& picture);

/// A new VARIANT, which the caller clears: truth values, 16-bit and 32-bit integers, strings, and objects.
VARIANT to_variant(const PropertyValue& value);

/// What the VARIANT holds, of whatever kind that is.
PropertyValue to_property_value(const VARIANT& value);

/// The variant type that a stored property of that kind has.
VARTYPE variant_type(PropertyKind kind);

}  // namespace tornby::automation
