#pragma once

#include <windows.h>

#include <oleauto.h>

namespace kavrelon {

/// Owns an automation value, initially empty.
class Variant : public VARIANT {
  public:
    Variant() noexcept { VariantInit(this); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
};

/// Whether a value that comes from outside may be read: a reference in it leads somewhere, and not on to
/// another reference to a variant. The system's conversions follow references without a look.
bool isReadable(const VARIANT& value) noexcept;

/// Puts a value that comes from outside, as another type, into `result`, which may be the value itself.
/// Numbers are written in one way, whatever the user's country. DISP_E_TYPEMISMATCH for a value that may not
/// be read.
HRESULT changeType(VARIANT& result, const VARIANT& value, VARTYPE type) noexcept;

/// Looks at the arguments of a late-bound call before anything is done with them: E_INVALIDARG when there are
/// fewer than it says; DISP_E_TYPEMISMATCH, with the place in `badArgument`, when one of them may not be
/// read.
HRESULT checkArguments(const DISPPARAMS* parameters, UINT* badArgument) noexcept;

}  // namespace kavrelon
