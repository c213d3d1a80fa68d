// Where containers keep a control's settings: their property bag, or a stream.
#pragma once

#include "automation/com/com.h"
#include "controls/stream_bag.h"

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

/// The rest of a stream. Raises 57 (device error) where it ends too early.
class StreamSource final : public SettingsSource {
 public:
  explicit StreamSource(IStream* stream) : stream_(stream) {}

  void read(std::span<std::uint8_t> bytes) override;
  PicturePointer picture() override;

 private:
  IStream* stream_;
};

/// A stream, written on. Raises 61 (disk full) where it takes no more.
class StreamTarget final : public SettingsTarget {
 public:
  explicit StreamTarget(IStream* stream) : stream_(stream) {}

  void write(ByteView bytes) override;
  bool is_kept(const PicturePointer& picture) const override;
  void write(const PicturePointer& picture) override;

 private:
  IStream* stream_;
};

}  // namespace tornby::automation
