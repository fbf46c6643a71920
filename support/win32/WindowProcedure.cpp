#include "support/win32/WindowProcedure.h"

#include "support/win32/Module.h"

namespace kavrelon {
namespace {

/// The number of the platform's pointer: its name stands for a single-byte text.
constexpr WORD kArrowCursor = 32512;

}  // namespace

WindowClassDescription WindowProcedure::windowClass(HINSTANCE module, const char* name, UINT style) {
    WNDCLASSEXW platform{};
    platform.cbSize = sizeof platform;
    platform.style = style;
    platform.lpfnWndProc = procedure;
    platform.hInstance = module;
    platform.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(kArrowCursor));
    return {name, platform};
}

void WindowProcedure::listenTo(HWND window) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void WindowProcedure::stopListeningTo(HWND window) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
}

WindowProcedure* WindowProcedure::listenerOf(HWND window) {
    return reinterpret_cast<WindowProcedure*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

LRESULT CALLBACK WindowProcedure::procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
    const ModuleLock inUse;
    try {
        WindowProcedure* const listener = listenerOf(window);
        if (listener != nullptr && id == WM_NCDESTROY) {
            stopListeningTo(window);
            listener->windowDestroyed();
        } else if (listener != nullptr) {
            if (const WindowAnswer answer = listener->handle({window, id, wParam, lParam})) return *answer;
        }
    } catch (...) {
        // The event is lost; the platform's default procedure handles the message.
    }
    return DefWindowProcW(window, id, wParam, lParam);
}

}  // namespace kavrelon
