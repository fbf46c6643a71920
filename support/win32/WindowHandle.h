#pragma once

#include <windows.h>

#include <memory>
#include <new>
#include <type_traits>

namespace kavrelon {

struct DestroyWindowHandle {
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
};

/// Owns a window. It has to be released before the platform destroys the window, for example with its parent.
using WindowHandle = std::unique_ptr<std::remove_pointer_t<HWND>, DestroyWindowHandle>;

/// Takes over the result of creating a window. Throws std::bad_alloc when that has failed.
inline WindowHandle takeOver(HWND created) {
    if (created == nullptr) throw std::bad_alloc();
    return WindowHandle(created);
}

}  // namespace kavrelon
