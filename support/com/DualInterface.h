#pragma once

#include "support/com/TypeInfo.h"
#include "support/com/Variant.h"

namespace kavrelon {

/// The IDispatch part of a dual interface, served from the module's own type library. A class derives from it
/// instead of the interface, and implements the interface's own members.
template <class DualInterfaceType>
class DualInterface : public DualInterfaceType {
  public:
    using Interface = DualInterfaceType;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info == nullptr) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return typeInfo_.give(__uuidof(Interface), info);
    }

    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        ITypeInfo* info = nullptr;
        const HRESULT loaded = typeInfo_.load(__uuidof(Interface), &info);
        return SUCCEEDED(loaded) ? DispGetIDsOfNames(info, names, count, ids) : loaded;
    }

    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        const HRESULT checked = checkArguments(parameters, badArgument);
        if (FAILED(checked)) return checked;
        ITypeInfo* info = nullptr;
        const HRESULT loaded = typeInfo_.load(__uuidof(Interface), &info);
        if (FAILED(loaded)) return loaded;
        // The member may release this object, and with it the type information.
        const ComPtr<ITypeInfo> kept(info);
        auto* const object = static_cast<Interface*>(this);
        return DispInvoke(object, info, id, flags, parameters, result, exception, badArgument);
    }

  private:
    TypeInfo typeInfo_;
};

}  // namespace kavrelon
