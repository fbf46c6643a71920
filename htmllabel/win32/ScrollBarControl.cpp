#include "htmllabel/win32/ScrollBarControl.h"

#include <algorithm>

namespace kavrelon {

void ScrollBarControl::create(HINSTANCE module, HWND parent) {
    const DWORD direction = kind_ == ScrollBar::vscScroll ? SBS_VERT : SBS_HORZ;
    window_ = takeOver(CreateWindowExA(0, "SCROLLBAR", "", WS_CHILD | direction, 0, 0, 0, 0, parent, nullptr,
                                       module, nullptr));
}

void ScrollBarControl::place(const Rect& place) {
    SetWindowPos(window_.get(), nullptr, place.left, place.top, std::max(place.width(), 0),
                 std::max(place.height(), 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

void ScrollBarControl::show(const ScrollState& state) {
    const bool visibilityChanged = state.visible != state_.visible;
    state_ = state;
    if (window_ == nullptr) return;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    const int page = std::max(state.LargeChange, 1);
    info.nMin = state.Min;
    // The platform's highest value is one page before the end of its range.
    info.nMax = state.Max + page - 1;
    info.nPage = static_cast<UINT>(page);
    info.nPos = state.Value;
    SetScrollInfo(window_.get(), SB_CTL, &info, TRUE);
    if (visibilityChanged) ShowWindow(window_.get(), state.visible ? SW_SHOWNA : SW_HIDE);
}

int ScrollBarControl::asked(WORD code) const {
    switch (code) {
        case SB_LINEUP:
            return state_.after(ScrollStep::LineUp);
        case SB_LINEDOWN:
            return state_.after(ScrollStep::LineDown);
        case SB_PAGEUP:
            return state_.after(ScrollStep::PageUp);
        case SB_PAGEDOWN:
            return state_.after(ScrollStep::PageDown);
        case SB_TOP:
            return state_.after(ScrollStep::Top);
        case SB_BOTTOM:
            return state_.after(ScrollStep::Bottom);
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION: {
            // The message itself has only 16 bits for the position of the thumb.
            SCROLLINFO info{};
            info.cbSize = sizeof info;
            info.fMask = SIF_TRACKPOS;
            GetScrollInfo(window_.get(), SB_CTL, &info);
            return info.nTrackPos;
        }
        default:
            return state_.Value;
    }
}

std::optional<int> ScrollBarControl::scrolled(WPARAM wParam) {
    const int value = state_.limited(asked(LOWORD(wParam)));
    if (value == state_.Value) return std::nullopt;
    ScrollState next = state_;
    next.Value = value;
    show(next);
    return value;
}

}  // namespace kavrelon
