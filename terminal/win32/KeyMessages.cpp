#include "terminal/win32/KeyMessages.h"

#include "terminal/Keyboard.h"
#include "terminal/TermWindow.h"

namespace kavrelon {
namespace {

bool isDown(int key) {
    return GetKeyState(key) < 0;
}

std::int16_t shiftState() {
    int state = 0;
    if (isDown(VK_SHIFT)) state |= Keyboard::kShift;
    if (isDown(VK_CONTROL)) state |= Keyboard::kCtrl;
    if (isDown(VK_MENU)) state |= Keyboard::kAlt;
    return static_cast<std::int16_t>(state);
}

bool isRightHand(LPARAM flags) {
    return (HIWORD(flags) & KF_EXTENDED) != 0;
}

/// The Pause key calls itself Cancel while Ctrl is held.
std::int16_t keyCode(WPARAM key) {
    return static_cast<std::int16_t>(key == VK_CANCEL ? VK_PAUSE : key);
}

}  // namespace

std::optional<LRESULT> KeyMessages::handle(TermWindowEvents& events, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            return keyDown(events, wParam, lParam);
        case WM_KEYUP:
        case WM_SYSKEYUP:
            return keyUp(events, wParam);
        case WM_CHAR:
            if (!state_->swallowCharacter) events.Form_KeyPress(static_cast<std::int16_t>(wParam));
            return 0;
        case WM_DEADCHAR:
        case WM_SYSCHAR:
            return state_->swallowCharacter ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_KILLFOCUS:
            events.Form_LostFocus();
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> KeyMessages::keyDown(TermWindowEvents& events, WPARAM key, LPARAM flags) {
    const std::shared_ptr<State> state = state_;
    *state = {};
    // Whoever had the keyboard in between, a menu for one, may have kept the release to itself.
    if (!isDown(VK_CONTROL)) events.Form_KeyUp(VK_CONTROL, shiftState());
    // AltGr arrives as Ctrl and the right Alt key. What it types are characters, not Ctrl combinations.
    if (key == VK_CONTROL && isDown(VK_RMENU)) return 0;
    if (key == VK_MENU && isRightHand(flags) && isDown(VK_CONTROL))
        events.Form_KeyUp(VK_CONTROL, shiftState());

    std::int16_t code = keyCode(key);
    events.Form_KeyDown(code, shiftState());
    if (code != 0) return std::nullopt;
    *state = {.swallowCharacter = true, .swallowAltUp = isDown(VK_MENU)};
    return 0;
}

std::optional<LRESULT> KeyMessages::keyUp(TermWindowEvents& events, WPARAM key) {
    const bool swallowed = key == VK_MENU && state_->swallowAltUp;
    events.Form_KeyUp(keyCode(key), shiftState());
    return swallowed ? std::optional<LRESULT>(0) : std::nullopt;
}

}  // namespace kavrelon
