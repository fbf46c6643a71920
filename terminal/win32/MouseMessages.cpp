#include "terminal/win32/MouseMessages.h"

#include "terminal/TermWindow.h"

namespace kavrelon {
namespace {

/// The position in a mouse message: signed, since the mouse may be left of the window or above it.
Point position(LPARAM lParam) {
    return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
}

// Platforms give the wheel to the window that has the keyboard: the terminal, even when the mouse is over a
// help box in front of it. That one gets the message from here.
LRESULT handWheelOn(HWND window, WPARAM wParam, LPARAM lParam) {
    const Point mouse = position(lParam);
    const HWND under = WindowFromPoint({mouse.x, mouse.y});
    if (GetWindow(GetAncestor(under, GA_ROOT), GW_OWNER) == window) {
        SendMessageA(under, WM_MOUSEWHEEL, wParam, lParam);
    }
    return 0;
}

}  // namespace

std::optional<LRESULT> handleMouse(TermWindowEvents& events, HWND window, UINT message, WPARAM wParam,
                                   LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            SetCapture(window);
            events.Form_MouseDown(MouseButton::Left, position(lParam));
            return 0;
        case WM_MOUSEMOVE:
            events.Form_MouseMove(GetCapture() == window, position(lParam));
            return 0;
        case WM_LBUTTONUP:
            if (GetCapture() == window) ReleaseCapture();
            events.Form_MouseUp(MouseButton::Left, position(lParam));
            return 0;
        case WM_RBUTTONDOWN:
            events.Form_MouseDown(MouseButton::Right, position(lParam));
            return 0;
        case WM_RBUTTONUP:
            events.Form_MouseUp(MouseButton::Right, position(lParam));
            return 0;
        case WM_MOUSEWHEEL:
            return handWheelOn(window, wParam, lParam);
        case WM_CONTEXTMENU:
            // From the menu key; the mouse has its menu from the button's release.
            if (lParam != -1) return std::nullopt;
            events.Form_MouseUp(MouseButton::Right, {});
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace kavrelon
