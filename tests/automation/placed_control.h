// A control in the fake container.
#pragma once

#include "fake_container.h"

namespace tornby::testing {

template <class Interface, class Object>
ComPtr<Interface> as(const Object& object) {
  ComPtr<Interface> answer;
  EXPECT_EQ(object->QueryInterface(__uuidof(Interface), answer.out_void()), S_OK);
  return answer;
}

/// Connects a sink to one outgoing interface for as long as it lives.
class Connection {
 public:
  template <class Object>
  Connection(const Object& object, REFIID iid, IUnknown* sink) {
    EXPECT_EQ(as<IConnectionPointContainer>(object)->FindConnectionPoint(iid, point_.out()), S_OK);
    EXPECT_EQ(point_->Advise(sink, &cookie_), S_OK);
  }
  ~Connection() { leave(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void leave() {
    if (point_) point_->Unadvise(cookie_);
    point_ = ComPtr<IConnectionPoint>();
  }

 private:
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

struct OleLibraries {
  OleLibraries() { ::OleInitialize(nullptr); }
  ~OleLibraries() { ::OleUninitialize(); }
};

/// A control in a container, active in place.
template <class Interface>
struct Placed {
  Placed(const Server& server, REFCLSID clsid, FakeContainer& place)
      : container(place), control(server.create<Interface>(clsid)) {
    object = as<IOleObject>(control);
    in_place = as<IOleInPlaceObject>(control);
    container.active = in_place.get();
    EXPECT_EQ(as<IPersistStreamInit>(control)->InitNew(), S_OK);
    EXPECT_EQ(object->SetClientSite(&container), S_OK);
    EXPECT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &container, 0, container.window(), &container.place),
              S_OK);
    EXPECT_EQ(in_place->GetWindow(&window), S_OK);
  }
  ~Placed() {
    if (!object) return;
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    container.active = nullptr;
  }

  FakeContainer& container;
  ComPtr<Interface> control;
  ComPtr<IOleObject> object;
  ComPtr<IOleInPlaceObject> in_place;
  HWND window = nullptr;
};

}  // namespace tornby::testing
