#pragma once

#include <unknwn.h>

#include "support/com/ComCall.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// The locks that clients have put on the library. One taken off too often must not free it while something
/// else holds it, nor keep it for ever.
class ServerLocks {
  public:
    static void add() noexcept {
        ModuleLock::lock();
        InterlockedIncrement(&count_);
    }
    static void remove() noexcept {
        for (LONG seen = count(); seen > 0; seen = count()) {
            if (InterlockedCompareExchange(&count_, seen - 1, seen) == seen) return ModuleLock::unlock();
        }
    }

  private:
    static LONG count() noexcept { return InterlockedCompareExchange(&count_, 0, 0); }

    static inline LONG count_ = 0;
};

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
        lock != FALSE ? ServerLocks::add() : ServerLocks::remove();
        return S_OK;
    }
};

}  // namespace kavrelon
