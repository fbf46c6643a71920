#pragma once

#include <windows.h>

#include <optional>

namespace kavrelon {

class HTMLLabel;
class LabelContainer;

/// Turns the view port's mouse messages into mouse events. While a button is held the view port has all of
/// the mouse, so that a drag may leave it. Answers like a window procedure; nothing means the platform's own.
std::optional<LRESULT> handleMouse(HTMLLabel& label, LabelContainer& container, HWND viewPort, UINT message,
                                   WPARAM wParam, LPARAM lParam);

/// The same for the keyboard. What the label does not take goes on.
std::optional<LRESULT> handleKeys(HTMLLabel& label, LabelContainer& container, HWND viewPort, UINT message,
                                  WPARAM wParam);

}  // namespace kavrelon
