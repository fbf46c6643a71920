#include "plugin/com/EscTreeDispatch.h"

#include "support/com/ComCall.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

constexpr DISPID kEscTreeProcess = 5;
enum Parameter : UINT { kIndex, kArgs, kParameters };

/// What the caller gave for a parameter; null when it was left out.
const VARIANT* argumentFor(Parameter parameter, const DISPPARAMS& given) {
    for (UINT i = 0; i < given.cNamedArgs; ++i) {
        if (given.rgdispidNamedArgs[i] == static_cast<DISPID>(parameter)) return &given.rgvarg[i];
    }
    // The others stand in reverse order after those with a name.
    const UINT inOrder = given.cArgs - given.cNamedArgs;
    return parameter < inOrder ? &given.rgvarg[given.cArgs - 1 - parameter] : nullptr;
}

/// The system's conversion, which takes its time also where there is nothing to convert.
HRESULT toShort(const VARIANT& value, short& number) {
    if (value.vt != VT_I2) {
        Variant converted;
        const HRESULT result = changeType(converted, value, VT_I2);
        number = converted.iVal;
        return result;
    }
    number = value.iVal;
    return S_OK;
}

/// How a script says that it has no array: by nothing, by a null, or by an object that is none.
bool isNothing(const VARIANT& value) {
    switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return true;
        case VT_ERROR:
            return value.scode == DISP_E_PARAMNOTFOUND;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return value.punkVal == nullptr;
        default:
            return false;
    }
}

/// The array that an argument holds, by value or by reference, and null where there is none, as behind a null
/// reference. What is something else gives `otherwise`.
SAFEARRAY* arrayOf(const VARIANT& argument, SAFEARRAY* otherwise) {
    const bool refers = argument.vt == (VT_VARIANT | VT_BYREF);
    if (refers && argument.pvarVal == nullptr) return nullptr;
    const VARIANT& value = refers ? *argument.pvarVal : argument;
    if (isNothing(value)) return nullptr;
    if ((value.vt & VT_ARRAY) == 0) return otherwise;
    if ((value.vt & VT_BYREF) == 0) return value.parray;
    return value.pparray != nullptr ? *value.pparray : nullptr;
}

}  // namespace

STDMETHODIMP EscTreeDispatch::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    const bool call = id == kEscTreeProcess && iid == IID_NULL && (flags & DISPATCH_METHOD) != 0;
    if (!call || parameters == nullptr || parameters->cArgs > kParameters) {
        return DualInterface::Invoke(id, iid, locale, flags, parameters, result, exception, badArgument);
    }
    // Arguments that may not be read are no reason to fail yet: one of them may stand for no array.
    if (checkArguments(parameters, badArgument) == E_INVALIDARG) return E_INVALIDARG;
    return invokeProcess(*parameters, result, exception, badArgument);
}

HRESULT EscTreeDispatch::invokeProcess(const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                                       UINT* badArgument) {
    const VARIANT* const row = argumentFor(kIndex, parameters);
    if (row == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    short index = 0;
    const HRESULT converted = toShort(*row, index);
    if (FAILED(converted)) {
        if (badArgument != nullptr) *badArgument = static_cast<UINT>(row - parameters.rgvarg);
        return converted;
    }

    // The member itself refuses what is no array, once it has looked at the row.
    SAFEARRAY noArray{};
    const VARIANT* const fields = argumentFor(kArgs, parameters);
    SAFEARRAY* array = fields != nullptr ? arrayOf(*fields, &noArray) : nullptr;
    long value = 0;
    const HRESULT processed = EscTreeProcess(index, &array, &value);
    if (FAILED(processed)) return passOn(processed, exception);
    if (result != nullptr) {
        VariantInit(result);
        result->vt = VT_I4;
        result->lVal = value;
    }
    return S_OK;
}

}  // namespace kavrelon
