// Events: members that a caller assigns a callable to.
#pragma once

#include <functional>
#include <utility>

namespace tornby {

/// An event with the given arguments. A reference argument is passed on as such, so that the handler may change it.
/// An event that nobody has assigned raises nothing.
template <class... Arguments>
class Event {
 public:
  using Handler = std::function<void(Arguments...)>;

  Event& operator=(Handler handler) {
    handler_ = std::move(handler);
    return *this;
  }
  explicit operator bool() const { return static_cast<bool>(handler_); }

  /// Runs a copy of the handler: it may assign the event anew while it runs.
  void raise(Arguments... arguments) const {
    if (!handler_) return;
    const Handler running = handler_;
    running(std::forward<Arguments>(arguments)...);
  }

 private:
  Handler handler_;
};

}  // namespace tornby
