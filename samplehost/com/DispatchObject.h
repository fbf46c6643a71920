#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/com/ComCall.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// An automation object made of one function: a sink for events, or a form with members that are found by
/// name.
class DispatchObject final : public Implements<IDispatch> {
  public:
    /// Gets the member's number, the arguments, last one first, and a place for a result, which may be null.
    using Handler = std::function<HRESULT(DISPID id, DISPPARAMS& arguments, VARIANT* result)>;

    /// Members with a name have its place in `names` as their number.
    explicit DispatchObject(Handler handler, std::vector<std::wstring> names = {})
        : handler_(std::move(handler)), names_(std::move(names)) {}

    /// From here on nothing is handled: a control may keep its reference for longer than what answers it is
    /// there.
    void detach() { handler_ = {}; }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  private:
    Handler handler_;
    std::vector<std::wstring> names_;
};

}  // namespace kavrelon
