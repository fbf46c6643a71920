#pragma once

#include <windows.h>

#include <oleauto.h>

#include "support/com/ComPtr.h"

namespace kavrelon {

/// What the library's own type library says of an interface, loaded when it is first asked for. It is kept by
/// the object that serves the interface, so that the last object takes the loaded library with it.
class TypeInfo {
  public:
    /// Null in `info` with a failure when the type library cannot be read. The reference stays ours.
    HRESULT load(REFIID iid, ITypeInfo** info) noexcept;

  private:
    ComPtr<ITypeInfo> info_;
};

}  // namespace kavrelon
