#pragma once

#include "quillabor.h"
#include "support/com/DualInterface.h"

namespace kavrelon {

/// IClientEscTree for scripts: their arrays hold variants, which a call by the type library, where the array
/// is one of strings, would refuse. So `EscTreeProcess` takes the array as it comes.
class EscTreeDispatch : public DualInterface<IClientEscTree> {
  public:
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  private:
    HRESULT invokeProcess(const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                          UINT* badArgument);
};

}  // namespace kavrelon
