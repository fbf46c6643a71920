#pragma once

#include <windows.h>

#include <optional>

namespace kavrelon {

class TermWindowEvents;

/// Turns mouse messages into mouse events, and the menu key into a click with the right button. From the left
/// button's press to its release the window has all of the mouse, so that a drag may leave it. Answers like a
/// window procedure; nothing means the platform's own.
std::optional<LRESULT> handleMouse(TermWindowEvents& events, HWND window, UINT message, WPARAM wParam,
                                   LPARAM lParam);

}  // namespace kavrelon
