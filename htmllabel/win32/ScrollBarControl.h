#pragma once

#include <windows.h>

#include <optional>

#include "htmllabel/ScrollState.h"
#include "support/Geometry.h"
#include "support/win32/WindowHandle.h"

namespace kavrelon {

/// A standard scroll bar in a label's window, with the state that the label gave it.
class ScrollBarControl {
  public:
    explicit ScrollBarControl(ScrollBar kind) : kind_(kind) {}

    void create(HINSTANCE module, HWND parent);
    /// The parent is about to be destroyed, and the control with it.
    void forget() { static_cast<void>(window_.release()); }

    HWND hWnd() const { return window_.get(); }
    const ScrollState& state() const { return state_; }
    void place(const Rect& place);
    void show(const ScrollState& state);
    /// The new value that a scroll message of the control asks for; nothing when the message does not change
    /// the value. The control shows the new value at once, before `show` confirms it.
    std::optional<int> scrolled(WPARAM wParam);

  private:
    int asked(WORD code) const;

    ScrollBar kind_;
    ScrollState state_;
    WindowHandle window_;
};

}  // namespace kavrelon
