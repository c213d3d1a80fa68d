#include "automation/controls/ole_values.h"

#include <cmath>

#include "automation/com/convert.h"
#include "automation/com/error_edge.h"
#include "base/runtime_error.h"

namespace tornby::automation {
namespace {

constexpr double currency_unit = 10'000;  // a font's size is a currency value

BOOL to_bool(bool value) {
  return value ? TRUE : FALSE;
}

VARIANT object_variant(IDispatch* taken_over) {
  VARIANT out;
  ::VariantInit(&out);
  out.vt = VT_DISPATCH;
  out.pdispVal = taken_over;
  return out;
}

template <class Interface>
ComPtr<Interface> query(IUnknown* object, REFIID iid) {
  ComPtr<Interface> answer;
  if (FAILED(object->QueryInterface(iid, answer.out_void()))) throw RuntimeError(StandardError::type_mismatch);
  return answer;
}

IDispatch* dispatch_of(IUnknown* object) {
  return object ? query<IDispatch>(object, IID_IDispatch).detach() : nullptr;
}

/// An object property is a font or a picture, or nothing, which stands for no picture.
PropertyValue object_value(IUnknown* object) {
  if (!object) return PicturePointer();
  ComPtr<IFont> font;
  if (SUCCEEDED(object->QueryInterface(IID_IFont, font.out_void()))) return describe_font(object);
  return wrap_picture(object);
}

}  // namespace

ComPtr<IFont> make_font(const Font& font) {
  FONTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = const_cast<LPOLESTR>(reinterpret_cast<const wchar_t*>(font.name.c_str()));
  description.cySize.int64 = std::llround(font.size * currency_unit);
  description.sWeight = font.weight;
  description.sCharset = font.charset;
  description.fItalic = to_bool(font.italic);
  description.fUnderline = to_bool(font.underline);
  description.fStrikethrough = to_bool(font.strikeout);
  ComPtr<IFont> object;
  check(::OleCreateFontIndirect(&description, IID_IFont, object.out_void()));
  return object;
}

Font describe_font(IUnknown* object) {
  if (!object) throw RuntimeError(StandardError::object_variable_not_set);
  const auto source = query<IFont>(object, IID_IFont);
  BSTR name = nullptr;
  CY size = {};
  BOOL italic = FALSE;
  BOOL underline = FALSE;
  BOOL strikeout = FALSE;
  Font font;
  check(source->get_Name(&name));
  font.name = String(view(name));
  ::SysFreeString(name);
  check(source->get_Size(&size));
  check(source->get_Weight(&font.weight));
  check(source->get_Charset(&font.charset));
  check(source->get_Italic(&italic));
  check(source->get_Underline(&underline));
  check(source->get_Strikethrough(&strikeout));
  font.size = static_cast<double>(size.int64) / currency_unit;
  font.italic = italic != FALSE;
  font.underline = underline != FALSE;
  font.strikeout = strikeout != FALSE;
  return font;
}

std::int32_t OlePicture::width() const {
  OLE_XSIZE_HIMETRIC width = 0;
  check(picture_->get_Width(&width));
  return width;
}

std::int32_t OlePicture::height() const {
  OLE_YSIZE_HIMETRIC height = 0;
  check(picture_->get_Height(&height));
  return height;
}

void OlePicture::draw(HDC context, const RECT& area) const {
  // A picture counts its rows from below.
  picture_->Render(context, area.left, area.top, area.right - area.left, area.bottom - area.top, 0, height(), width(),
                   -height(), nullptr);
}

PicturePointer wrap_picture(IUnknown* object) {
  if (!object) return nullptr;
  auto picture = query<IPicture>(object, IID_IPicture);
  OLE_HANDLE handle = 0;
  if (FAILED(picture->get_Handle(&handle)) || handle == 0) return nullptr;
  return std::make_shared<OlePicture>(std::move(picture));
}

ComPtr<IPictureDisp> unwrap_picture(const PicturePointer& picture) {
  const auto* wrapped = dynamic_cast<const OlePicture*>(picture.get());
  return wrapped ? query<IPictureDisp>(wrapped->object().get(), IID_IPictureDisp) : ComPtr<IPictureDisp>();
}

VARIANT to_variant(const PropertyValue& value) {
  VARIANT out;
  ::VariantInit(&out);
  out.vt = variant_type(kind_of(value));
  switch (kind_of(value)) {
    case PropertyKind::boolean:
      out.boolVal = to_boolean(std::get<bool>(value));
      break;
    case PropertyKind::int16:
      out.iVal = std::get<std::int16_t>(value);
      break;
    case PropertyKind::int32:
      out.lVal = std::get<std::int32_t>(value);
      break;
    case PropertyKind::color:
      out.lVal = static_cast<LONG>(std::get<Color>(value));
      break;
    case PropertyKind::text:
      out.bstrVal = to_bstr(std::get<String>(value));
      break;
    case PropertyKind::font:
      return object_variant(dispatch_of(make_font(std::get<Font>(value)).get()));
    case PropertyKind::picture:
      return object_variant(dispatch_of(unwrap_picture(std::get<PicturePointer>(value)).get()));
  }
  return out;
}

PropertyValue to_property_value(const VARIANT& value) {
  switch (value.vt) {
    case VT_BOOL:
      return from_boolean(value.boolVal);
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return object_value(value.punkVal);
    default: {
      const Variant plain = from_variant(value);
      if (const auto* small = std::get_if<std::int16_t>(&plain)) return *small;
      if (const auto* text = std::get_if<String>(&plain)) return *text;
      return to_int32(plain);
    }
  }
}

VARTYPE variant_type(PropertyKind kind) {
  switch (kind) {
    case PropertyKind::boolean:
      return VT_BOOL;
    case PropertyKind::int16:
      return VT_I2;
    case PropertyKind::int32:
    case PropertyKind::color:
      return VT_I4;
    case PropertyKind::text:
      return VT_BSTR;
    case PropertyKind::font:
    case PropertyKind::picture:
      break;
  }
  return VT_DISPATCH;
}

}  // namespace tornby::automation
