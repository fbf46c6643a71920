#pragma once

#include <windows.h>

#include "support/Geometry.h"

namespace kavrelon {

/// The part of the desktop that windows may cover, on the screen that a window is on.
RECT workArea(HWND window);

/// The size of a window around an inner area: with its frame, and its menu bar in as many lines as that takes
/// at this width.
Size outerSize(HWND window, Size inner);

/// Bounds what the user is making of a window's rectangle (WM_SIZING) by what an inner area of this size
/// takes, or by the work area where that is smaller. The edges that are not dragged stay.
void boundSizing(HWND window, int draggedEdge, Size leastInner, RECT& wanted);

}  // namespace kavrelon
