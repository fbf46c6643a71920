#pragma once

#include <unknwn.h>

#include "support/com/ComCall.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// Makes objects of one class, which must have a text `kClassName` for error objects. Refuses aggregation.
template <class Object>
class ClassFactory final : public Implements<IClassFactory> {
  public:
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        HRESULT found = E_FAIL;
        const HRESULT made = comCall({Object::kClassName, "CreateInstance", IID_IClassFactory}, [&] {
            auto* const fresh = new Object;
            found = fresh->QueryInterface(iid, object);
            fresh->Release();
        });
        return SUCCEEDED(made) ? found : made;
    }

    STDMETHODIMP LockServer(BOOL lock) override {
        lock != FALSE ? kavrelon::ModuleLock::lock() : kavrelon::ModuleLock::unlock();
        return S_OK;
    }
};

}  // namespace kavrelon
