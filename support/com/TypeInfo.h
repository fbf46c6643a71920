#pragma once

#include <windows.h>

#include <oleauto.h>

#include "support/com/ComPtr.h"

namespace kavrelon {

/// An interface's description in the module's own type library, loaded on first use. Each object that serves
/// the interface has its own, so that the type library is released with the last of them.
class TypeInfo {
  public:
    /// Stores null in `info` when it fails, which it does when the type library cannot be read. This object
    /// keeps the reference: the caller must not release it.
    HRESULT load(REFIID iid, ITypeInfo** info) noexcept;

    /// The same for a caller's own place: with a reference of the caller's.
    HRESULT give(REFIID iid, ITypeInfo** info) noexcept;

  private:
    ComPtr<ITypeInfo> info_;
};

}  // namespace kavrelon
