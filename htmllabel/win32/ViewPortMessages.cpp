#include "htmllabel/win32/ViewPortMessages.h"

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/LabelContainer.h"
#include "support/Keys.h"
#include "support/win32/KeyState.h"
#include "support/win32/PlatformGeometry.h"

namespace kavrelon {
namespace {

constexpr WPARAM kButtons = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON;

std::int16_t buttonsHeld(WPARAM wParam) {
    int held = 0;
    if ((wParam & MK_LBUTTON) != 0) held |= buttons::kLeft;
    if ((wParam & MK_RBUTTON) != 0) held |= buttons::kRight;
    if ((wParam & MK_MBUTTON) != 0) held |= buttons::kMiddle;
    return static_cast<std::int16_t>(held);
}

LRESULT buttonDown(HTMLLabel& label, const LabelContainer& container, HWND viewPort, std::int16_t button,
                   LPARAM lParam) {
    if (container.takesFocus()) SetFocus(viewPort);
    SetCapture(viewPort);
    label.picViewPort_MouseDown(button, shiftState(), pointIn(lParam));
    return 0;
}

LRESULT buttonUp(HTMLLabel& label, HWND viewPort, std::int16_t button, WPARAM wParam, LPARAM lParam) {
    if ((wParam & kButtons) == 0 && GetCapture() == viewPort) ReleaseCapture();
    label.picViewPort_MouseUp(button, shiftState(), pointIn(lParam));
    return 0;
}

}  // namespace

std::optional<LRESULT> handleMouse(HTMLLabel& label, LabelContainer& container, HWND viewPort, UINT message,
                                   WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            return buttonDown(label, container, viewPort, buttons::kLeft, lParam);
        case WM_RBUTTONDOWN:
            return buttonDown(label, container, viewPort, buttons::kRight, lParam);
        case WM_MBUTTONDOWN:
            return buttonDown(label, container, viewPort, buttons::kMiddle, lParam);
        case WM_LBUTTONUP:
            return buttonUp(label, viewPort, buttons::kLeft, wParam, lParam);
        case WM_RBUTTONUP:
            return buttonUp(label, viewPort, buttons::kRight, wParam, lParam);
        case WM_MBUTTONUP:
            return buttonUp(label, viewPort, buttons::kMiddle, wParam, lParam);
        case WM_CAPTURECHANGED:
            // Capturing the mouse again for a second button is no release.
            if (reinterpret_cast<HWND>(lParam) != viewPort) container.mouseReleased();
            return 0;
        case WM_MOUSEMOVE:
            label.picViewPort_MouseMove(buttonsHeld(wParam), shiftState(), pointIn(lParam));
            return 0;
        case WM_MOUSEWHEEL: {
            const double notches = static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA;
            // A label that does not scroll leaves the wheel to its form.
            return label.picViewPort_MouseWheel(notches) ? std::optional<LRESULT>(0) : std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> handleKeys(HTMLLabel& label, LabelContainer& container, HWND viewPort, UINT message,
                                  WPARAM wParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTTAB;
        case WM_KEYDOWN: {
            const std::int16_t shift = shiftState();
            // An event may destroy the view port.
            const HWND form = GetAncestor(viewPort, GA_ROOT);
            // A Tab that was refused has already left the last link, and must not start again at the first.
            if (!container.keyWasRefused() &&
                label.picViewPort_KeyDown(static_cast<std::int16_t>(wParam), shift)) {
                return 0;
            }
            // The label wants all Tab keys, so the dialog does not handle this one by itself.
            if (wParam == VK_TAB && (shift & ~shifts::kShift) == 0)
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
