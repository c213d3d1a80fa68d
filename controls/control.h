// What every control has towards its host: a life, input, and settings that are declared once, in a table.
//
// A host makes the control over a ControlHost, calls InitProperties for a new one or ReadProperties for a stored one,
// then resize, and from then on tells it what happens. While it calls, the host keeps the control alive: an event may
// make the form let go of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <tornby/base/event.h>
#include <tornby/controls/host.h>

namespace tornby {

/// Where input happened.
enum class Part { surface, label, picture, edit };

/// Mouse buttons, as events report them.
namespace mouse_button {
constexpr std::int16_t left = 1;
constexpr std::int16_t right = 2;
constexpr std::int16_t middle = 4;
}  // namespace mouse_button

/// Keys and shift states, as events report them.
namespace key {
constexpr std::int16_t enter = 13;
constexpr std::int16_t space = 32;
constexpr std::int16_t down = 40;
constexpr std::int16_t del = 46;
constexpr std::int16_t f4 = 115;
constexpr std::int16_t shift = 1;
constexpr std::int16_t control = 2;
constexpr std::int16_t alt = 4;
}  // namespace key

/// A pointer position in pixels from the top left corner of the part that it is told for.
struct Pointer {
  double x = 0;
  double y = 0;
};

enum class AccessibleRole { text, link, combo_box };

class Control {
 public:
  explicit Control(ControlHost& host) : host_(&host) {}
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  /// Gives a new control its start values.
  virtual void InitProperties() = 0;
  virtual void ReadProperties(const PropertyBag& bag) = 0;
  virtual void WriteProperties(PropertyBag& bag) const = 0;

  /// The surface has another size, or is ready for its first layout.
  virtual void resize() = 0;
  /// The system, or whoever wants the control drawn elsewhere, asks it to paint itself. What is drawn now appears in
  /// this painting. It does not follow from the control's own drawing.
  virtual void paint() {}

  virtual void mouse_down(Part part, std::int16_t button, Pointer at) = 0;
  /// `held` is the sum of the buttons that are down.
  virtual void mouse_move(Part, std::int16_t /*held*/, Pointer) {}
  virtual void mouse_up(Part part, std::int16_t button, Pointer at) = 0;
  /// Another window took the mouse capture from the control.
  virtual void capture_lost() {}

  /// A handler may change the key and the shift state; 0 swallows a typed character.
  virtual void key_down(Part, std::int16_t& /*key_code*/, std::int16_t& /*shift*/) {}
  virtual void key_up(Part, std::int16_t& /*key_code*/, std::int16_t& /*shift*/) {}
  virtual void key_press(Part, std::int16_t& /*character*/) {}
  /// The text of the edit field changed, by the user or by the control.
  virtual void text_changed() {}
  /// The form offers something else than before: a control that has what the form offered goes along.
  virtual void follow(const Ambients& /*before*/, const Ambients& /*now*/) {}
  virtual void got_focus() {}
  virtual void lost_focus() {}

  /// What the control does when it is used without the pointer, as by a screen reader or its mnemonic.
  virtual void activate() {}
  /// Whether the control itself, rather than an element in it or nothing at all, takes the keyboard.
  virtual bool takes_focus() const { return false; }
  /// What screen readers and dialogs call the control, a mnemonic marked with an ampersand, and what kind of thing it
  /// is.
  virtual String accessible_name() const = 0;
  virtual AccessibleRole accessible_role() const = 0;

 protected:
  ControlHost& host() const { return *host_; }
  Surface& surface() const { return host_->surface(); }
  template <class Value>
  static bool goes_along(const Value& own, const std::optional<Value>& before, const std::optional<Value>& now) {
    return before && now && own == *before && *now != *before;
  }

 private:
  ControlHost* host_;
};

/// One stored property of the control class C.
template <class C>
struct Property {
  using Fallback = PropertyValue (*)(const ControlHost&);

  StringView name;
  PropertyKind kind;
  Fallback fallback;  ///< stands for a missing value, and is not stored
  PropertyValue (*get)(const C&);
  void (*load)(C&, const PropertyValue&);    ///< takes a value just read, of the kind above
  Fallback fallback_when_writing = nullptr;  ///< where writing compares with another one
};

template <class C>
void read_properties(C& control, const ControlHost& host, const PropertyBag& bag, std::span<const Property<C>> table) {
  for (const Property<C>& property : table) {
    const PropertyValue value = bag.read(property.name, property.kind, property.fallback(host));
    property.load(control, to_kind(value, property.kind));
  }
}

template <class C>
void write_property(const C& control, const ControlHost& host, PropertyBag& bag, const Property<C>& property) {
  const auto fallback = property.fallback_when_writing ? property.fallback_when_writing : property.fallback;
  bag.write(property.name, property.get(control), fallback(host));
}

}  // namespace tornby
