#pragma once

#include "quillabor.h"
#include "support/com/DualInterface.h"

namespace kavrelon {

/// IClientReceive for scripts, which call `ReceiveData` for every byte: a call with one number, as nearly all
/// are, goes to the member at once. Whatever else somebody may give goes by the type library.
class ReceiveDispatch : public DualInterface<IClientReceive> {
  public:
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;
};

}  // namespace kavrelon
