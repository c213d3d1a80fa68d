// Events: the sinks of an object, and calls to them.
#pragma once

#include <span>
#include <vector>

#include "automation/com/com.h"

namespace tornby::automation {

/// The sinks of one outgoing interface of an object. It is a part of the object and shares its reference count.
class ConnectionPoint final : public IConnectionPoint {
 public:
  /// `container` is the object, `interface_id` the outgoing interface: a dispinterface of events, or another one.
  ConnectionPoint(IConnectionPointContainer& container, REFIID interface_id)
      : container_(container), interface_id_(interface_id) {}
  ConnectionPoint(const ConnectionPoint&) = delete;
  ConnectionPoint& operator=(const ConnectionPoint&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return container_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return container_.Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

  const IID& interface_id() const { return interface_id_; }

  /// Raises an event of a dispinterface. The arguments stand in the order of the event's declaration; one that the sink
  /// may change is a reference to the caller's value. A sink that fails does not keep the others from hearing of it.
  void raise(DISPID event, std::span<const VARIANT> arguments = {});

  /// Calls `action` with each sink, as a pointer to the outgoing interface. A sink may come or go meanwhile: one that
  /// has gone is not called any more, one that has come is not called yet.
  template <class Interface, class Action>
  void for_each(Action action) {
    const ComPtr<IConnectionPoint> alive(this);  // a sink may drop the object
    for (const auto& connection : std::vector<Connection>(connections_))
      if (is_connected(connection.cookie)) action(static_cast<Interface*>(connection.sink.get()));
  }

 private:
  struct Connection {
    ComPtr<IUnknown> sink;  // in truth a pointer to the outgoing interface
    DWORD cookie;
  };

  bool is_connected(DWORD cookie) const;

  IConnectionPointContainer& container_;
  const IID& interface_id_;
  std::vector<Connection> connections_;
  DWORD last_cookie_ = 0;
};

/// The connection points of an object. The object offers IConnectionPointContainer and forwards to it.
class ConnectionPoints {
 public:
  void add(ConnectionPoint& point) { points_.push_back(&point); }

  HRESULT enumerate(IEnumConnectionPoints** points) const;
  HRESULT find(REFIID iid, IConnectionPoint** point) const;

 private:
  std::vector<ConnectionPoint*> points_;
};

}  // namespace tornby::automation
