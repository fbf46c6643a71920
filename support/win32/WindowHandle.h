#pragma once

#include <windows.h>

#include <memory>
#include <new>
#include <type_traits>

namespace kavrelon {

struct DestroyWindowHandle {
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
};

/// Owns a window. One that the platform destroys by itself, a child along with its parent for one, has to be
/// released in time.
using WindowHandle = std::unique_ptr<std::remove_pointer_t<HWND>, DestroyWindowHandle>;

/// Takes a window over that has just been asked for. Throws std::bad_alloc when the platform had none to
/// give.
inline WindowHandle takeOver(HWND created) {
    if (created == nullptr) throw std::bad_alloc();
    return WindowHandle(created);
}

}  // namespace kavrelon
