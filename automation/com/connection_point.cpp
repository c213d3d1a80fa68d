#include "automation/com/connection_point.h"

#include <algorithm>

#include "automation/com/enumerator.h"
#include "automation/com/error_edge.h"

namespace tornby::automation {

HRESULT ConnectionPoint::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IConnectionPoint) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IConnectionPoint*>(this);
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) {
  if (!iid) return E_POINTER;
  *iid = interface_id_;
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = ComPtr<IConnectionPointContainer>(&container_).detach();
  return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  return guarded(IID_IConnectionPoint, L"Tornby", [&] {
    Connection connection{ComPtr<IUnknown>(), last_cookie_ + 1};
    // A sink that is written in late-bound style knows the events' dispinterface as IDispatch only.
    if (FAILED(sink->QueryInterface(interface_id_, connection.sink.out_void())) &&
        (interface_id_ == IID_IPropertyNotifySink ||
         FAILED(sink->QueryInterface(IID_IDispatch, connection.sink.out_void()))))
      throw ComError(CONNECT_E_CANNOTCONNECT);
    connections_.push_back(std::move(connection));
    *cookie = ++last_cookie_;
  });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
  const auto found = std::find_if(connections_.begin(), connections_.end(),
                                  [cookie](const Connection& connection) { return connection.cookie == cookie; });
  if (found == connections_.end()) return CONNECT_E_NOCONNECTION;
  const Connection released = std::move(*found);  // let go only when the list is in order again
  connections_.erase(found);
  return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (!connections) return E_POINTER;
  *connections = nullptr;
  return guarded(IID_IConnectionPoint, L"Tornby", [&] {
    std::vector<KeptConnection> kept;
    for (const Connection& connection : connections_) kept.push_back({connection.sink, connection.cookie});
    *connections = make_enumerator<IEnumConnections, CONNECTDATA>(std::move(kept));
  });
}

void ConnectionPoint::raise(DISPID event, std::span<const VARIANT> arguments) {
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  for_each<IDispatch>([&](IDispatch* sink) {
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    OwnedVariant ignored;
    sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, ignored.get(), nullptr, nullptr);
  });
}

bool ConnectionPoint::is_connected(DWORD cookie) const {
  return std::any_of(connections_.begin(), connections_.end(),
                     [cookie](const Connection& connection) { return connection.cookie == cookie; });
}

HRESULT ConnectionPoints::enumerate(IEnumConnectionPoints** points) const {
  if (!points) return E_POINTER;
  *points = nullptr;
  return guarded(IID_IConnectionPointContainer, L"Tornby", [&] {
    std::vector<ComPtr<IConnectionPoint>> kept;
    for (ConnectionPoint* point : points_) kept.emplace_back(point);
    *points = make_enumerator<IEnumConnectionPoints, IConnectionPoint*>(std::move(kept));
  });
}

HRESULT ConnectionPoints::find(REFIID iid, IConnectionPoint** point) const {
  if (!point) return E_POINTER;
  *point = nullptr;
  for (ConnectionPoint* candidate : points_) {
    if (candidate->interface_id() != iid) continue;
    *point = ComPtr<IConnectionPoint>(candidate).detach();
    return S_OK;
  }
  return CONNECT_E_NOCONNECTION;
}

}  // namespace tornby::automation
