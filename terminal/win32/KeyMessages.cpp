#include "terminal/win32/KeyMessages.h"

#include "support/win32/KeyState.h"
#include "terminal/KeyStroke.h"
#include "terminal/TermWindow.h"

namespace kavrelon {

std::optional<LRESULT> KeyMessages::handle(TermWindowEvents& events, UINT message, WPARAM wParam) {
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            return keyDown(events, wParam);
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

std::optional<LRESULT> KeyMessages::keyDown(TermWindowEvents& events, WPARAM key) {
    const std::shared_ptr<State> state = state_;
    *state = {};
    KeyStroke stroke = strokeOf(static_cast<std::int16_t>(key), shiftState(), isDown(VK_RMENU));
    events.Form_KeyDown(stroke);
    if (stroke.keyCode != 0) return std::nullopt;
    *state = {.swallowCharacter = true, .swallowAltUp = isDown(VK_MENU)};
    return 0;
}

std::optional<LRESULT> KeyMessages::keyUp(TermWindowEvents& events, WPARAM key) {
    const bool swallowed = key == VK_MENU && state_->swallowAltUp;
    events.Form_KeyUp(static_cast<std::int16_t>(key));
    return swallowed ? std::optional<LRESULT>(0) : std::nullopt;
}

}  // namespace kavrelon
