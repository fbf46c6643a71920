#pragma once

#include <windows.h>

#include <ocidl.h>

#include <vector>

#include "support/com/ComPtr.h"

namespace kavrelon {

/// The sinks of one events interface of an object: clients register them, and the object calls them.
///
/// It is a member of its object and shares its reference count.
class ConnectionPoint final : public IConnectionPoint {
  public:
    /// `iid` is the interface that sinks implement. With `dispatchDoes`, a sink that only answers for
    /// IDispatch is accepted too, as many sinks of dispinterfaces do.
    ConnectionPoint(IConnectionPointContainer& object, REFIID iid, bool dispatchDoes)
        : object_(object), iid_(iid), dispatchDoes_(dispatchDoes) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;

    REFIID iid() const noexcept { return iid_; }
    /// The sinks connected now, each by the interface that it answered for. A copy: a sink that is called may
    /// disconnect itself and others.
    std::vector<ComPtr<IUnknown>> sinks() const;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return object_.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return object_.Release(); }
    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** enumerator) override;

    struct Connection {
        ComPtr<IUnknown> sink;
        DWORD cookie;
    };

  private:
    IConnectionPointContainer& object_;
    const IID& iid_;
    const bool dispatchDoes_;
    std::vector<Connection> connections_;
    DWORD lastCookie_ = 0;
};

/// An enumerator over connection points, for their object.
HRESULT enumerate(std::vector<ConnectionPoint*> points, IEnumConnectionPoints** enumerator);

}  // namespace kavrelon
