#include "support/win32/WindowProcedure.h"

#include "support/win32/Module.h"

namespace kavrelon {
namespace {

/// The number of the platform's pointer: its name does not work with the single-byte calls.
constexpr WORD kArrowCursor = 32512;

}  // namespace

WNDCLASSEXA WindowProcedure::windowClass(HINSTANCE module, const char* name, UINT style) {
    WNDCLASSEXA result{};
    result.cbSize = sizeof result;
    result.style = style;
    result.lpfnWndProc = procedure;
    result.hInstance = module;
    result.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(kArrowCursor));
    result.lpszClassName = name;
    return result;
}

void WindowProcedure::listenTo(HWND window) {
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void WindowProcedure::stopListeningTo(HWND window) {
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
}

WindowProcedure* WindowProcedure::listenerOf(HWND window) {
    return reinterpret_cast<WindowProcedure*>(GetWindowLongPtrA(window, GWLP_USERDATA));
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
    return DefWindowProcA(window, id, wParam, lParam);
}

}  // namespace kavrelon
