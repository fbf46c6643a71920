#include "plugin/com/EscTreeDispatch.h"

#include "support/com/ComPtr.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

constexpr DISPID kEscTreeProcess = 5;

/// The array that an argument holds, by value or by reference; null when it holds something else.
SAFEARRAY* arrayOf(const VARIANT& argument) {
    if (argument.vt == (VT_VARIANT | VT_BYREF)) return arrayOf(*argument.pvarVal);
    if ((argument.vt & VT_ARRAY) == 0) return nullptr;
    return (argument.vt & VT_BYREF) != 0 ? *argument.pparray : argument.parray;
}

/// Makes a failure the exception of a script's call, with the text of the member's error object.
HRESULT passOn(HRESULT failure, EXCEPINFO* exception) {
    if (exception == nullptr) return DISP_E_EXCEPTION;
    *exception = EXCEPINFO{};
    exception->scode = failure;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) == S_OK) {
        info->GetSource(&exception->bstrSource);
        info->GetDescription(&exception->bstrDescription);
    }
    return DISP_E_EXCEPTION;
}

}  // namespace

STDMETHODIMP EscTreeDispatch::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    const bool plainCall = (flags & DISPATCH_METHOD) != 0 && parameters != nullptr &&
                           parameters->cArgs == 2 && parameters->cNamedArgs == 0;
    if (id != kEscTreeProcess || iid != IID_NULL || !plainCall) {
        return DualInterface::Invoke(id, iid, locale, flags, parameters, result, exception, badArgument);
    }
    return invokeProcess(*parameters, result, exception, badArgument);
}

HRESULT EscTreeDispatch::invokeProcess(DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                                       UINT* badArgument) {
    Variant index;
    const HRESULT converted = DispGetParam(&parameters, 0, VT_I2, &index, badArgument);
    if (FAILED(converted)) return converted;

    // Arguments are in reverse order.
    SAFEARRAY* array = arrayOf(parameters.rgvarg[0]);
    long value = 0;
    const HRESULT processed = EscTreeProcess(index.iVal, &array, &value);
    if (FAILED(processed)) return passOn(processed, exception);
    if (result != nullptr) {
        VariantInit(result);
        result->vt = VT_I4;
        result->lVal = value;
    }
    return S_OK;
}

}  // namespace kavrelon
