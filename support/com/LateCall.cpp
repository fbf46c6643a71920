#include "support/com/LateCall.h"

#include "support/com/ComCall.h"
#include "support/com/ComText.h"

namespace kavrelon {
namespace {

/// What a failed call tells about its failure.
class ExceptionDetails : public EXCEPINFO {
  public:
    ExceptionDetails() noexcept : EXCEPINFO{} {}
    ExceptionDetails(const ExceptionDetails&) = delete;
    ExceptionDetails& operator=(const ExceptionDetails&) = delete;
    ~ExceptionDetails() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }

    ComError error() noexcept {
        if (pfnDeferredFillIn != nullptr) pfnDeferredFillIn(this);
        const HRESULT result = scode != 0 ? scode : static_cast<HRESULT>(0x800A0000U | wCode);
        ComPtr<ICreateErrorInfo> info;
        if (FAILED(CreateErrorInfo(info.put()))) return ComError(result);
        info->SetSource(bstrSource);
        info->SetDescription(bstrDescription);
        return ComError(result, info.query<IErrorInfo>());
    }
};

}  // namespace

void callByName(IDispatch& object, const wchar_t* name, WORD flags, VARIANT* argument, VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    throwIfFailed(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));

    DISPPARAMS parameters{argument, nullptr, argument != nullptr ? 1U : 0U, 0};
    ExceptionDetails details;
    const HRESULT called =
        object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &details, nullptr);
    if (called == DISP_E_EXCEPTION) throw details.error();
    throwIfFailed(called);
}

}  // namespace kavrelon
