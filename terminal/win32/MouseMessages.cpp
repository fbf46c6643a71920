#include "terminal/win32/MouseMessages.h"

#include "support/win32/PlatformGeometry.h"
#include "terminal/TermWindow.h"

namespace kavrelon {
namespace {

// Platforms give the wheel to the window that has the keyboard: the terminal, even when the mouse is over a
// help box in front of it. That one gets the message from here.
LRESULT handWheelOn(HWND window, WPARAM wParam, LPARAM lParam) {
    const Point mouse = pointIn(lParam);
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
            events.Form_MouseDown(MouseButton::Left, pointIn(lParam));
            return 0;
        case WM_MOUSEMOVE:
            events.Form_MouseMove(GetCapture() == window, pointIn(lParam));
            return 0;
        case WM_LBUTTONUP:
            if (GetCapture() == window) ReleaseCapture();
            events.Form_MouseUp(MouseButton::Left, pointIn(lParam));
            return 0;
        case WM_RBUTTONDOWN:
            events.Form_MouseDown(MouseButton::Right, pointIn(lParam));
            return 0;
        case WM_RBUTTONUP:
            events.Form_MouseUp(MouseButton::Right, pointIn(lParam));
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
