#include "controls/property_bag.h"

namespace tornby {

PropertyValue PropertyBag::read(StringView name, PropertyKind kind, const PropertyValue& fallback) const {
  const std::optional<PropertyValue> stored = find(name, kind);
  return stored ? to_kind(*stored, kind) : fallback;
}

void PropertyBag::write(StringView name, const PropertyValue& value, const PropertyValue& fallback) {
  if (stores_defaults() || !equal_values(value, fallback)) store(name, value);
}

}  // namespace tornby
