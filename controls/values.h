// The values that a control's properties hold, and how they are stored.
#pragma once

#include <cstdint>
#include <memory>
#include <variant>

#include <tornby/base/text.h>

namespace tornby {

/// 0x00BBGGRR for a plain colour; 0x80000000 + n names system colour n, which is looked up whenever something is drawn.
using Color = std::uint32_t;

namespace system_color {
constexpr Color window_background = 0x80000005;
constexpr Color button_face = 0x8000000F;
constexpr Color button_shadow = 0x80000010;
constexpr Color button_text = 0x80000012;
}  // namespace system_color

/// A font by its description. What a new one describes is used where a host has no font of its own to offer.
struct Font {
  String name = u"MS Sans Serif";
  double size = 8.25;         ///< points
  std::int16_t weight = 400;  ///< 400 normal, 700 bold
  std::int16_t charset = 0;   ///< a Windows character set number; 0 is ANSI
  bool italic = false;
  bool underline = false;
  bool strikeout = false;

  bool bold() const { return weight > 550; }
  bool operator==(const Font&) const = default;
};

/// A picture, owned by whoever holds it. Only the host that made it knows what it shows.
class Picture {
 public:
  virtual ~Picture() = default;
  /// The size in HIMETRIC units, hundredths of a millimetre.
  virtual std::int32_t width() const = 0;
  virtual std::int32_t height() const = 0;
};

/// Null is "no picture". Hosts hand over an empty picture, one that shows nothing, as null.
using PicturePointer = std::shared_ptr<const Picture>;

enum class PropertyKind { boolean, int16, int32, color, text, font, picture };

/// One alternative for each PropertyKind, in the same order.
using PropertyValue = std::variant<bool, std::int16_t, std::int32_t, Color, String, Font, PicturePointer>;

inline PropertyKind kind_of(const PropertyValue& value) {
  return static_cast<PropertyKind>(value.index());
}

/// The value as another kind. Numbers, colours, truth values and decimal texts convert into each other: true is -1 as a
/// number, and any number but 0 is true. Raises 6 (overflow) and 13 (type mismatch).
PropertyValue to_kind(const PropertyValue& value, PropertyKind kind);

/// Equal as stored: numbers, colours and truth values by number, so that true equals -1 and not 1; fonts by what they
/// describe; pictures when they are the same object.
bool equal_values(const PropertyValue& left, const PropertyValue& right);

}  // namespace tornby
