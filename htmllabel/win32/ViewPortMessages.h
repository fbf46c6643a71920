#pragma once

#include <windows.h>

#include <optional>

namespace kavrelon {

class HTMLLabel;
class LabelContainer;

/// Turns the view port's mouse messages into mouse events. While a button is held the view port captures the
/// mouse, so that a drag may leave it. Gives the window procedure's answer.
std::optional<LRESULT> handleMouse(HTMLLabel& label, LabelContainer& container, HWND viewPort, UINT message,
                                   WPARAM wParam, LPARAM lParam);

/// The same for the keyboard. Keys that the label does not use go on to the platform.
std::optional<LRESULT> handleKeys(HTMLLabel& label, LabelContainer& container, HWND viewPort, UINT message,
                                  WPARAM wParam);

}  // namespace kavrelon
