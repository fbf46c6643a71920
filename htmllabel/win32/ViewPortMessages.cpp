#include "htmllabel/win32/ViewPortMessages.h"

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/LabelContainer.h"
#include "support/Keys.h"
#include "support/win32/KeyState.h"
#include "support/win32/PlatformGeometry.h"

namespace kavrelon {
namespace {

std::int16_t buttonsHeld(WPARAM wParam) {
    int held = 0;
    if ((wParam & MK_LBUTTON) != 0) held |= buttons::kLeft;
    if ((wParam & MK_RBUTTON) != 0) held |= buttons::kRight;
    if ((wParam & MK_MBUTTON) != 0) held |= buttons::kMiddle;
    return static_cast<std::int16_t>(held);
}

LRESULT buttonDown(HTMLLabel& label, const LabelContainer& container, const WindowMessage& message,
                   std::int16_t button) {
    if (container.takesFocus()) SetFocus(message.window);
    SetCapture(message.window);
    label.picViewPort_MouseDown(button, shiftState(), pointIn(message.lParam));
    return 0;
}

LRESULT buttonUp(HTMLLabel& label, const WindowMessage& message, std::int16_t button) {
    if (buttonsHeld(message.wParam) == 0 && GetCapture() == message.window) ReleaseCapture();
    label.picViewPort_MouseUp(button, shiftState(), pointIn(message.lParam));
    return 0;
}

}  // namespace

WindowAnswer handleMouse(HTMLLabel& label, LabelContainer& container, const WindowMessage& message) {
    switch (message.id) {
        case WM_LBUTTONDOWN:
            return buttonDown(label, container, message, buttons::kLeft);
        case WM_RBUTTONDOWN:
            return buttonDown(label, container, message, buttons::kRight);
        case WM_MBUTTONDOWN:
            return buttonDown(label, container, message, buttons::kMiddle);
        case WM_LBUTTONUP:
            return buttonUp(label, message, buttons::kLeft);
        case WM_RBUTTONUP:
            return buttonUp(label, message, buttons::kRight);
        case WM_MBUTTONUP:
            return buttonUp(label, message, buttons::kMiddle);
        case WM_CAPTURECHANGED:
            // Capturing the mouse again for a second button is no release.
            if (reinterpret_cast<HWND>(message.lParam) != message.window) container.mouseReleased();
            return 0;
        case WM_MOUSEMOVE:
            label.picViewPort_MouseMove(buttonsHeld(message.wParam), shiftState(), pointIn(message.lParam));
            return 0;
        case WM_MOUSEWHEEL: {
            const double notches = static_cast<double>(GET_WHEEL_DELTA_WPARAM(message.wParam)) / WHEEL_DELTA;
            // A label that does not scroll leaves the wheel to its form.
            return label.picViewPort_MouseWheel(notches) ? WindowAnswer(0) : std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

WindowAnswer handleKeys(HTMLLabel& label, LabelContainer& container, const WindowMessage& message) {
    switch (message.id) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTTAB;
        case WM_KEYDOWN: {
            const std::int16_t shift = shiftState();
            // An event may destroy the view port.
            const HWND form = GetAncestor(message.window, GA_ROOT);
            // A Tab that was refused has already left the last link, and must not start again at the first.
            if (!container.keyWasRefused() &&
                label.picViewPort_KeyDown(static_cast<std::int16_t>(message.wParam), shift)) {
                return 0;
            }
            // The label wants all Tab keys, so the dialog does not handle this one by itself.
            if (message.wParam == VK_TAB && (shift & ~shifts::kShift) == 0)
                PostMessageA(form, WM_NEXTDLGCTL, shift, FALSE);
            return std::nullopt;
        }
        case WM_SETFOCUS:
            label.picViewPort_GotFocus();
            return 0;
        case WM_KILLFOCUS:
            label.picViewPort_LostFocus();
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace kavrelon
