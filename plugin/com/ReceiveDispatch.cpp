#include "plugin/com/ReceiveDispatch.h"

#include <optional>

#include "support/com/ComCall.h"

namespace kavrelon {
namespace {

constexpr DISPID kReceiveData = 2;

/// The byte of a whole number, by value or in a script's variable. Nothing for what is no such number, and
/// for what would have to be refused.
std::optional<unsigned char> byteOf(const VARIANT& argument) {
    const bool refers = argument.vt == (VT_VARIANT | VT_BYREF) && argument.pvarVal != nullptr;
    const VARIANT& value = refers ? *argument.pvarVal : argument;
    const long number = value.vt == VT_UI1 ? value.bVal : value.vt == VT_I2 ? value.iVal : value.lVal;
    const bool isNumber = value.vt == VT_UI1 || value.vt == VT_I2 || value.vt == VT_I4;
    if (!isNumber || number < 0 || number > 255) return std::nullopt;
    return static_cast<unsigned char>(number);
}

bool givesOneArgument(const DISPPARAMS* parameters) {
    return parameters != nullptr && parameters->cArgs == 1 && parameters->cNamedArgs == 0 &&
           parameters->rgvarg != nullptr;
}

}  // namespace

STDMETHODIMP ReceiveDispatch::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    if (id == kReceiveData && iid == IID_NULL && (flags & DISPATCH_METHOD) != 0 &&
        givesOneArgument(parameters)) {
        if (const auto byte = byteOf(parameters->rgvarg[0])) {
            if (result != nullptr) VariantInit(result);
            const HRESULT received = ReceiveData(*byte);
            return SUCCEEDED(received) ? received : passOn(received, exception);
        }
    }
    return DualInterface::Invoke(id, iid, locale, flags, parameters, result, exception, badArgument);
}

}  // namespace kavrelon
