#pragma once

#include "quillabor.h"
#include "support/com/DualInterface.h"

namespace kavrelon {

/// IClientMain for scripts, which know of an object just the members that its first interface answers for:
/// names that IClientMain lacks are those of the current window.
class MainDispatch : public DualInterface<IClientMain> {
  public:
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        const HRESULT found = DualInterface::GetIDsOfNames(iid, names, count, locale, ids);
        if (found != DISP_E_UNKNOWNNAME) return found;
        return windowMembers().GetIDsOfNames(iid, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override {
        if (id < kFirstOfWindow)
            return DualInterface::Invoke(id, iid, locale, flags, parameters, result, exception, badArgument);
        return windowMembers().Invoke(id, iid, locale, flags, parameters, result, exception, badArgument);
    }

  protected:
    /// The members of the current window. Their numbers go on after those of IClientMain.
    virtual IDispatch& windowMembers() = 0;

  private:
    static constexpr DISPID kFirstOfWindow = 101;
};

}  // namespace kavrelon
