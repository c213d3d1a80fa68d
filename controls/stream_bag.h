// A control's settings in the form that streams hold.
#pragma once

#include <utility>
#include <vector>

#include "controls/property_bag.h"

namespace tornby {

/// Where a StreamBag comes from. What fails raises its error.
class SettingsSource {
 public:
  virtual ~SettingsSource() = default;

  /// The next bytes, as many as `bytes` has.
  virtual void read(std::span<std::uint8_t> bytes) = 0;
  /// A picture in its host's own form.
  virtual PicturePointer picture() = 0;
};

/// Where a StreamBag is written to, likewise.
class SettingsTarget {
 public:
  virtual ~SettingsTarget() = default;

  virtual void write(ByteView bytes) = 0;
  virtual bool is_kept(const PicturePointer& picture) const = 0;
  /// A picture that is kept.
  virtual void write(const PicturePointer& picture) = 0;
};

/// Settings in memory, on their way to a stream or from one.
///
/// A stream holds: "TORN", the format's number 1 and the count of properties (32 bits each, least significant byte
/// first), then of each its name, its kind and its value. Texts are a 32-bit count and UTF-16; a font is what it
/// describes; a picture is a truth value and the picture object's own form. Beside the control's properties there is
/// its size, in hundredths of a millimetre, as the 32-bit numbers "_ExtentX" and "_ExtentY".
class StreamBag final : public PropertyBag {
 public:
  void save(SettingsTarget& target) const;

  /// Raises 13 (type mismatch) for what is no such stream.
  static StreamBag load(SettingsSource& source);

 private:
  std::optional<PropertyValue> find(StringView name, PropertyKind kind) const override;
  void store(StringView name, const PropertyValue& value) override;

  std::vector<std::pair<String, PropertyValue>> properties_;
};

}  // namespace tornby
