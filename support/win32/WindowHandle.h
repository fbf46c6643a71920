#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace kavrelon {

struct DestroyWindowHandle {
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
};

/// Owns a window. One that the platform destroys by itself, a child along with its parent for one, has to be
/// released in time.
using WindowHandle = std::unique_ptr<std::remove_pointer_t<HWND>, DestroyWindowHandle>;

}  // namespace kavrelon
