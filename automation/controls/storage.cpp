#include "automation/controls/storage.h"

#include "automation/com/convert.h"
#include "automation/com/error_edge.h"
#include "automation/controls/ole_values.h"
#include "base/runtime_error.h"

namespace tornby::automation {

std::optional<PropertyValue> ContainerBag::find(StringView name, PropertyKind kind) const {
  const String terminated(name);
  OwnedVariant value;
  value->vt = variant_type(kind);  // a container may convert to the type that it finds here
  value->byref = nullptr;
  if (FAILED(bag_->Read(reinterpret_cast<const wchar_t*>(terminated.c_str()), value.get(), log_))) return {};
  return to_property_value(*value);
}

void ContainerBag::store(StringView name, const PropertyValue& value) {
  if (value == PropertyValue(PicturePointer())) return;  // many bags cannot hold Nothing
  const String terminated(name);
  OwnedVariant stored(to_variant(value));
  check(bag_->Write(reinterpret_cast<const wchar_t*>(terminated.c_str()), stored.get()));
}

void StreamSource::read(std::span<std::uint8_t> bytes) {
  ULONG got = 0;
  check(stream_->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &got));
  if (got != bytes.size()) throw RuntimeError(StandardError::device_io_error);
}

PicturePointer StreamSource::picture() {
  ComPtr<IPersistStream> persist;  // an empty picture, by no description at all
  check(::OleCreatePictureIndirect(nullptr, IID_IPersistStream, TRUE, persist.out_void()));
  check(persist->Load(stream_));
  return wrap_picture(persist.get());
}

void StreamTarget::write(ByteView bytes) {
  ULONG written = 0;
  check(stream_->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written));
  if (written != bytes.size()) throw RuntimeError(StandardError::disk_full);
}

bool StreamTarget::is_kept(const PicturePointer& picture) const {
  return static_cast<bool>(unwrap_picture(picture));
}

void StreamTarget::write(const PicturePointer& picture) {
  ComPtr<IPersistStream> persist;
  check(unwrap_picture(picture)->QueryInterface(IID_IPersistStream, persist.out_void()));
  check(persist->Save(stream_, TRUE));
}

}  // namespace tornby::automation
