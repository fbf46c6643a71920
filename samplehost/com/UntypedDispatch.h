#pragma once

#include <windows.h>

#include <oleauto.h>

#include "support/com/Implements.h"

namespace kavrelon {

/// An interface for the list of `Implements`: IDispatch without type information, for objects whose members
/// are looked up by hand.
class UntypedDispatch : public Extending<IDispatch> {
  public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        return DISP_E_BADINDEX;
    }
};

}  // namespace kavrelon
