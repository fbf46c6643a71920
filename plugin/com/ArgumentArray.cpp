#include "plugin/com/ArgumentArray.h"

#include <algorithm>
#include <span>

#include "support/RuntimeError.h"
#include "support/com/ComText.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

/// The elements of an array. It is not locked: nothing that is done with them calls anybody.
template <class Element>
std::span<Element> elementsOf(const SAFEARRAY* array) {
    return {static_cast<Element*>(array->pvData), array->rgsabound[0].cElements};
}

bool holds(const SAFEARRAY* array, unsigned feature, std::size_t elementSize) {
    return array->cDims == 1 && (array->fFeatures & feature) != 0 && array->cbElements == elementSize;
}

}  // namespace

ArgumentArray::ArgumentArray(SAFEARRAY* array) {
    if (array == nullptr) return;
    const bool strings = holds(array, FADF_BSTR, sizeof(BSTR));
    if (!strings && !holds(array, FADF_VARIANT, sizeof(VARIANT))) raise(RuntimeErrorNumber::TypeMismatch);
    // Erased, or not dimensioned yet: the bounds mean nothing.
    if (array->pvData == nullptr) return;

    const SAFEARRAYBOUND& bound = array->rgsabound[0];
    // Far below every index that is asked for, and yet far enough from where arithmetic overflows.
    constexpr LONG kLowest = -0x40000000;
    lowerBound_ = std::max(bound.lLbound, kLowest);
    fields_.reserve(bound.cElements);

    if (strings) {
        for (BSTR field : elementsOf<BSTR>(array)) add(bstrView(field));
    } else {
        for (VARIANT& field : elementsOf<VARIANT>(array)) add(field);
    }
}

void ArgumentArray::add(std::wstring_view field) {
    const int length = ansiLength(field);
    const auto size = static_cast<std::size_t>(length);
    auto* const text = static_cast<char*>(memory_.allocate(size, 1));
    toAnsi(field, text, length);
    fields_.emplace_back(text, size);
}

void ArgumentArray::add(VARIANT& field) {
    if (field.vt == VT_BSTR) return add(bstrView(field.bstrVal));

    // An object would be asked for its value, and could then call anything; a variant in the variant may
    // hold one.
    const VARTYPE type = field.vt & VT_TYPEMASK;
    if (type == VT_DISPATCH || type == VT_UNKNOWN || type == VT_VARIANT)
        raise(RuntimeErrorNumber::TypeMismatch);
    Variant text;
    if (FAILED(changeType(text, field, VT_BSTR))) raise(RuntimeErrorNumber::TypeMismatch);
    add(bstrView(text.bstrVal));
}

}  // namespace kavrelon
