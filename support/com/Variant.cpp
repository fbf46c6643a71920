#include "support/com/Variant.h"

namespace kavrelon {
namespace {

constexpr VARTYPE kReferenceToVariant = VT_VARIANT | VT_BYREF;

bool leadsSomewhere(const VARIANT& value) noexcept {
    // A record is two pointers, and nothing here takes one.
    return (value.vt & VT_TYPEMASK) != VT_RECORD && ((value.vt & VT_BYREF) == 0 || value.byref != nullptr);
}

}  // namespace

bool isReadable(const VARIANT& value) noexcept {
    if (!leadsSomewhere(value)) return false;
    if (value.vt != kReferenceToVariant) return true;
    return value.pvarVal->vt != kReferenceToVariant && leadsSomewhere(*value.pvarVal);
}

HRESULT changeType(VARIANT& result, const VARIANT& value, VARTYPE type) noexcept {
    if (!isReadable(value)) return DISP_E_TYPEMISMATCH;
    return VariantChangeTypeEx(&result, const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, type);
}

HRESULT checkArguments(const DISPPARAMS* parameters, UINT* badArgument) noexcept {
    if (parameters == nullptr || parameters->cNamedArgs > parameters->cArgs) return E_INVALIDARG;
    const bool listsAreThere = (parameters->cArgs == 0 || parameters->rgvarg != nullptr) &&
                               (parameters->cNamedArgs == 0 || parameters->rgdispidNamedArgs != nullptr);
    if (!listsAreThere) return E_INVALIDARG;
    for (UINT place = 0; place < parameters->cArgs; ++place) {
        if (isReadable(parameters->rgvarg[place])) continue;
        if (badArgument != nullptr) *badArgument = place;
        return DISP_E_TYPEMISMATCH;
    }
    return S_OK;
}

}  // namespace kavrelon
