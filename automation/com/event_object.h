// A class object that raises events.
#pragma once

#include "automation/com/connection_point.h"
#include "automation/com/dispatch_object.h"

namespace tornby::automation {

/// Interface is the dual interface, Events the source dispinterface; for More see DispatchObject.
template <class Interface, class Events, class... More>
class EventObject : public DispatchObject<Interface, IConnectionPointContainer, More...> {
 public:
  EventObject(const wchar_t* source, REFCLSID clsid)
      : DispatchObject<Interface, IConnectionPointContainer, More...>(source, clsid, __uuidof(Events)) {
    points_.add(events_);
  }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
    return points_.enumerate(points);
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    return points_.find(iid, point);
  }

 protected:
  void* find_interface(REFIID iid) override {
    return iid == IID_IConnectionPointContainer ? static_cast<IConnectionPointContainer*>(this) : nullptr;
  }

  ConnectionPoint& events() { return events_; }
  /// For outgoing interfaces beside the events.
  ConnectionPoints& points() { return points_; }

 private:
  ConnectionPoint events_{*this, __uuidof(Events)};
  ConnectionPoints points_;
};

}  // namespace tornby::automation
