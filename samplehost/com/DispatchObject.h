#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "samplehost/com/UntypedDispatch.h"
#include "support/com/ComCall.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// An automation object made from one function: a sink for events, or a form whose members are found by name.
class DispatchObject final : public Implements<UntypedDispatch> {
  public:
    /// Gets the member's number, the arguments in reverse order, and where to put a result, which may be
    /// null.
    using Handler = std::function<HRESULT(DISPID id, DISPPARAMS& arguments, VARIANT* result)>;

    /// A member's number is the index of its name in `names`.
    explicit DispatchObject(Handler handler, std::vector<std::wstring> names = {})
        : handler_(std::move(handler)), names_(std::move(names)) {}

    /// Stops calling the handler. For its owner's end, which a control's reference may outlive.
    void detach() { handler_ = {}; }

    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  private:
    Handler handler_;
    std::vector<std::wstring> names_;
};

}  // namespace kavrelon
