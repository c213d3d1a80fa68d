// Where containers keep a control's settings: their property bag, or a stream.
#pragma once

#include <utility>
#include <vector>

#include "automation/com/com.h"
#include "controls/property_bag.h"

namespace tornby::automation {

/// A container's property bag.
class ContainerBag final : public PropertyBag {
 public:
  /// `log` may be null; a container that gave one hears of what it stored and cannot be read. `all` stores values that
  /// equal their defaults too.
  ContainerBag(IPropertyBag* bag, IErrorLog* log, bool all = false) : bag_(bag), log_(log), all_(all) {}

 private:
  std::optional<PropertyValue> find(StringView name, PropertyKind kind) const override;
  void store(StringView name, const PropertyValue& value) override;
  bool stores_defaults() const override { return all_; }

  IPropertyBag* bag_;
  IErrorLog* log_;
  bool all_;
};

/// Settings in memory, on their way to a stream or from one.
///
/// A stream holds: "TORN", the format's number 1 and the count of properties (32 bits each, least significant byte
/// first), then of each its name, its kind and its value. Texts are a 32-bit count and UTF-16; a font is what it
/// describes; a picture is a truth value and the picture object's own form. Beside the control's properties there is
/// its size, in hundredths of a millimetre, as the 32-bit numbers "_ExtentX" and "_ExtentY".
class StreamBag final : public PropertyBag {
 public:
  void save(IStream* stream) const;

  /// Raises 13 (type mismatch) for what is no such stream, and 57 (device error) for one that ends too early.
  static StreamBag load(IStream* stream);

 private:
  std::optional<PropertyValue> find(StringView name, PropertyKind kind) const override;
  void store(StringView name, const PropertyValue& value) override;

  std::vector<std::pair<String, PropertyValue>> properties_;
};

}  // namespace tornby::automation
