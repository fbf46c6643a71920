#include "support/com/ConnectionPoint.h"

#include <olectl.h>

#include <algorithm>

#include "support/com/Enumerator.h"

namespace kavrelon {
namespace {

ComMember member(const char* name) {
    return {"ConnectionPoint", name, IID_IConnectionPoint};
}

CONNECTDATA copyConnection(const ConnectionPoint::Connection& connection) {
    return {ComPtr<IUnknown>(connection.sink).detach(), connection.cookie};
}

using PointEntry = ComPtr<IConnectionPoint>;
IConnectionPoint* copyPoint(const PointEntry& point) {
    return PointEntry(point).detach();
}

using ConnectionEnumerator =
    Enumerator<IEnumConnections, ConnectionPoint::Connection, CONNECTDATA, &copyConnection>;
using PointEnumerator = Enumerator<IEnumConnectionPoints, PointEntry, IConnectionPoint*, &copyPoint>;

}  // namespace

std::vector<ComPtr<IUnknown>> ConnectionPoint::sinks() const {
    std::vector<ComPtr<IUnknown>> sinks;
    for (const Connection& connection : connections_) sinks.push_back(connection.sink);
    return sinks;
}

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IConnectionPoint ? this : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (iid == nullptr) return E_POINTER;
    *iid = iid_;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    *container = &object_;
    object_.AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    return comCall(member("Advise"), [&] {
        out(cookie) = 0;
        if (sink == nullptr) throw ComError(E_POINTER);
        Connection connection{{}, ++lastCookie_};
        if (FAILED(sink->QueryInterface(iid_, connection.sink.putVoid())) && dispatchDoes_) {
            sink->QueryInterface(IID_IDispatch, connection.sink.putVoid());
        }
        if (!connection.sink) throw ComError(CONNECT_E_CANNOTCONNECT);
        connections_.push_back(connection);
        *cookie = connection.cookie;
    });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
    const auto found =
        std::find_if(connections_.begin(), connections_.end(),
                     [=](const Connection& connection) { return connection.cookie == cookie; });
    if (found == connections_.end()) return CONNECT_E_NOCONNECTION;
    // Released last: the sink's end may call this member again.
    const Connection ended = std::move(*found);
    connections_.erase(found);
    return S_OK;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** enumerator) {
    return comCall(member("EnumConnections"),
                   [&] { out(enumerator) = new ConnectionEnumerator(connections_); });
}

HRESULT enumerate(std::vector<ConnectionPoint*> points, IEnumConnectionPoints** enumerator) {
    return comCall(member("EnumConnectionPoints"), [&] {
        out(enumerator) = new PointEnumerator(std::vector<PointEntry>(points.begin(), points.end()));
    });
}

}  // namespace kavrelon
