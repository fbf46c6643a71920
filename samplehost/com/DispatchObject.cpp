#include "samplehost/com/DispatchObject.h"

#include <algorithm>

namespace kavrelon {

STDMETHODIMP DispatchObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const auto found = std::find_if(names_.begin(), names_.end(), [&](const std::wstring& name) {
        return _wcsicmp(name.c_str(), names[0]) == 0;
    });
    if (found == names_.end() || count > 1) return DISP_E_UNKNOWNNAME;
    ids[0] = static_cast<DISPID>(found - names_.begin());
    return S_OK;
}

STDMETHODIMP DispatchObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result,
                                    EXCEPINFO*, UINT*) {
    if (arguments == nullptr) return E_POINTER;
    // The handler may call `detach`, which ends it, and release this object.
    const ComPtr<IDispatch> self(this);
    const Handler handler = handler_;
    if (!handler) return S_OK;
    return comCall({"samplehost", "Invoke", IID_IDispatch}, [&] { return handler(id, *arguments, result); });
}

}  // namespace kavrelon
