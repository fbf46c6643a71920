#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "helpbox/HelpWindow.h"
#include "support/Geometry.h"

namespace kavrelon {

class HeadlessHelpWindow;

/// The desktop of headless help windows: the windows, what they ask about other windows, and the mouse.
struct HeadlessDesktop {
    std::vector<HeadlessHelpWindow*> helpWindows;
    std::function<Rect(WindowId)> rectangleOf = [](WindowId) { return Rect{}; };
    std::function<bool(WindowId)> isShown = [](WindowId) { return true; };
    Point cursor;
    std::int16_t heldButtons = 0;
};

}  // namespace kavrelon
