#include "terminal/win32/WindowExtent.h"

#include <algorithm>

namespace kavrelon {
namespace {

/// More than any frame takes.
constexpr LONG kAmple = 0x7FFF;

/// What the frame and the menu bar take of a window. The platform's own computation of a frame leaves out
/// that the menu bar of a narrow window has several lines; the message does not.
Size frameSize(HWND window, LONG outerWidth) {
    RECT inner{0, 0, outerWidth, kAmple};
    SendMessageW(window, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&inner));
    return {static_cast<int>(outerWidth - (inner.right - inner.left)),
            static_cast<int>(kAmple - (inner.bottom - inner.top))};
}

}  // namespace

RECT workArea(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

Size outerSize(HWND window, Size inner) {
    const int width = inner.width + frameSize(window, kAmple).width;
    return {width, inner.height + frameSize(window, width).height};
}

void boundSizing(HWND window, int draggedEdge, Size leastInner, RECT& wanted) {
    const RECT area = workArea(window);
    const LONG leastWidth = leastInner.width + frameSize(window, kAmple).width;
    const LONG width = std::max(wanted.right - wanted.left, std::min(leastWidth, area.right - area.left));
    // By the width that it gets: the menu bar's lines depend on that.
    const LONG leastHeight = leastInner.height + frameSize(window, width).height;
    const LONG height = std::max(wanted.bottom - wanted.top, std::min(leastHeight, area.bottom - area.top));
    const auto drags = [draggedEdge](auto... edges) { return ((draggedEdge == edges) || ...); };
    if (drags(WMSZ_LEFT, WMSZ_TOPLEFT, WMSZ_BOTTOMLEFT)) {
        wanted.left = wanted.right - width;
    } else {
        wanted.right = wanted.left + width;
    }
    if (drags(WMSZ_TOP, WMSZ_TOPLEFT, WMSZ_TOPRIGHT)) {
        wanted.top = wanted.bottom - height;
    } else {
        wanted.bottom = wanted.top + height;
    }
}

}  // namespace kavrelon
