// Where a control keeps its settings between two runs.
#pragma once

#include <optional>

#include <tornby/controls/values.h>

namespace tornby {

/// One control's stored properties. A host implements `find` and `store` over whatever it saves to: its own property
/// bag, a stream, memory.
class PropertyBag {
 public:
  virtual ~PropertyBag() = default;

  /// The stored value as `kind`, or `fallback` as it stands when nothing is stored under the name.
  PropertyValue read(StringView name, PropertyKind kind, const PropertyValue& fallback) const;

  /// Stores the value, unless it equals `fallback` and the host does not want to have those.
  void write(StringView name, const PropertyValue& value, const PropertyValue& fallback);

 private:
  /// Nothing when the name is missing. `kind` is what the control expects, for hosts that must say so to get it.
  virtual std::optional<PropertyValue> find(StringView name, PropertyKind kind) const = 0;
  virtual void store(StringView name, const PropertyValue& value) = 0;
  virtual bool stores_defaults() const { return false; }
};

}  // namespace tornby
