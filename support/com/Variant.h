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

}  // namespace kavrelon
