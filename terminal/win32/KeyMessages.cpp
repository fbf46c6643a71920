#include "terminal/win32/KeyMessages.h"

#include <utility>

#include "support/win32/KeyState.h"
#include "support/win32/WideText.h"
#include "terminal/KeyStroke.h"
#include "terminal/TermWindow.h"

namespace kavrelon {

WindowAnswer KeyMessages::handle(TermWindowEvents& events, const WindowMessage& message) {
    const std::shared_ptr<State> state = state_;
    switch (message.id) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN: {
            const WindowAnswer answer = state->keyDown(events, message.wParam);
            state->takeCharacters(events, message.window);
            return answer;
        }
        case WM_KEYUP:
        case WM_SYSKEYUP: {
            const bool swallowed = message.wParam == VK_MENU && state->swallowAltUp;
            events.Form_KeyUp(static_cast<std::int16_t>(message.wParam));
            state->takeCharacters(events, message.window);
            return swallowed ? WindowAnswer(0) : std::nullopt;
        }
        case WM_CHAR:
        case WM_IME_CHAR:
            state->type(events, static_cast<wchar_t>(message.wParam));
            return 0;
        case WM_UNICHAR:
            // Who sends these asks first whether they are understood.
            if (message.wParam != UNICODE_NOCHAR) state->typeCodePoint(events, message.wParam);
            return message.wParam == UNICODE_NOCHAR ? TRUE : FALSE;
        case WM_DEADCHAR:
        case WM_SYSCHAR:
            return state->swallowCharacter ? WindowAnswer(0) : std::nullopt;
        case WM_KILLFOCUS:
            events.Form_LostFocus();
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

WindowAnswer KeyMessages::State::keyDown(TermWindowEvents& events, WPARAM key) {
    swallowCharacter = swallowAltUp = false;
    KeyStroke stroke = strokeOf(static_cast<std::int16_t>(key), shiftState(), isDown(VK_RMENU));
    events.Form_KeyDown(stroke);
    if (stroke.keyCode != 0) return std::nullopt;
    swallowCharacter = true;
    swallowAltUp = isDown(VK_MENU);
    return 0;
}

/// The platform has put a key's characters into the queue already. They are taken from there as they are,
/// since a host whose message loop is a single-byte one would make similar ones of those that its code page
/// lacks.
void KeyMessages::State::takeCharacters(TermWindowEvents& events, HWND window) {
    constexpr UINT kPosted = PM_QS_POSTMESSAGE;
    MSG next{};
    while (PeekMessageW(&next, window, WM_KEYFIRST, WM_KEYLAST, PM_NOREMOVE | kPosted) &&
           next.message == WM_CHAR && PeekMessageW(&next, window, WM_CHAR, WM_CHAR, PM_REMOVE | kPosted)) {
        type(events, static_cast<wchar_t>(next.wParam));
    }
}

void KeyMessages::State::type(TermWindowEvents& events, wchar_t unit) {
    if (swallowCharacter) return;
    std::wstring typed;
    if (const wchar_t first = std::exchange(highSurrogate, L'\0')) typed += first;
    if (isHighSurrogate(unit)) {
        highSurrogate = unit;
    } else {
        typed += unit;
    }
    for (const char byte : toAnsi(typed)) events.Form_KeyPress(static_cast<unsigned char>(byte));
}

void KeyMessages::State::typeCodePoint(TermWindowEvents& events, WPARAM codePoint) {
    constexpr WPARAM kFirstOfTwo = 0x10000;
    if (codePoint < kFirstOfTwo) return type(events, static_cast<wchar_t>(codePoint));
    type(events, static_cast<wchar_t>(0xD800 + ((codePoint - kFirstOfTwo) >> 10)));
    type(events, static_cast<wchar_t>(0xDC00 + (codePoint & 0x3FF)));
}

}  // namespace kavrelon
