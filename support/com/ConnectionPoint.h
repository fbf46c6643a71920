#pragma once

#include <windows.h>

#include <ocidl.h>

#include <vector>

#include "support/com/ComPtr.h"

namespace kavrelon {

/// One kind of sinks of an object: where they are registered, and found again to be called.
///
/// It is a part of its object and lives as long: every reference to it is one to the object.
class ConnectionPoint final : public IConnectionPoint {
  public:
    /// `iid` is what sinks implement. Sinks of a dispinterface often answer for IDispatch alone, which does.
    ConnectionPoint(IConnectionPointContainer& object, REFIID iid, bool dispatchDoes)
        : object_(object), iid_(iid), dispatchDoes_(dispatchDoes) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;

    REFIID iid() const noexcept { return iid_; }
    /// The sinks there are now, each as the interface that it gave. A sink that is called may end its own
    /// connection and those of others.
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
