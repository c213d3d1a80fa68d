// A class object that raises events.
#pragma once

#include "automation/com/connection_point.h"
#include "automation/com/dispatch_object.h"

namespace tornby::automation {

/// Interface is the dual interface, Events the source dispinterface.
template <class Interface, class Events>
class EventObject : public DispatchObject<Interface, IConnectionPointContainer> {
 public:
  EventObject(const wchar_t* source, REFCLSID clsid)
      : DispatchObject<Interface, IConnectionPointContainer>(source, clsid, __uuidof(Events)) {}

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

 private:
  ConnectionPoint events_{*this, __uuidof(Events)};
  ConnectionPoints points_{{&events_}};
};

}  // namespace tornby::automation
