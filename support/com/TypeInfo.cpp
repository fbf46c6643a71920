#include "support/com/TypeInfo.h"

#include <new>
#include <string>

#include "support/win32/Module.h"

namespace kavrelon {
namespace {

HRESULT loadFromModule(REFIID iid, ITypeInfo** info) {
    ComPtr<ITypeLib> library;
    // From the file, not by its registration: objects work the same when the library is not registered.
    const HRESULT loaded = LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, library.put());
    return SUCCEEDED(loaded) ? library->GetTypeInfoOfGuid(iid, info) : loaded;
}

}  // namespace

HRESULT TypeInfo::load(REFIID iid, ITypeInfo** info) noexcept {
    *info = nullptr;
    if (!info_) {
        try {
            const HRESULT loaded = loadFromModule(iid, info_.put());
            if (FAILED(loaded)) return loaded;
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }
    *info = info_.get();
    return S_OK;
}

HRESULT TypeInfo::give(REFIID iid, ITypeInfo** info) noexcept {
    if (info == nullptr) return E_POINTER;
    const HRESULT loaded = load(iid, info);
    if (SUCCEEDED(loaded)) (*info)->AddRef();
    return loaded;
}

}  // namespace kavrelon
