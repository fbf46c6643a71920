#pragma once

#include "support/win32/WindowProcedure.h"

namespace kavrelon {

class HTMLLabel;
class LabelContainer;

/// Turns the view port's mouse messages into mouse events. While a button is held the view port captures the
/// mouse, so that a drag may leave it. Gives the window procedure's answer.
WindowAnswer handleMouse(HTMLLabel& label, LabelContainer& container, const WindowMessage& message);

/// The same for the keyboard. Keys that the label does not use go on to the platform.
WindowAnswer handleKeys(HTMLLabel& label, LabelContainer& container, const WindowMessage& message);

}  // namespace kavrelon
