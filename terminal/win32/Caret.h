#pragma once

#include <windows.h>

#include "support/Geometry.h"

namespace kavrelon {

/// The system's caret in a window, at the cursor's cell: screen readers, magnifiers and input methods follow
/// it. It is never shown, since the terminal draws its own cursor.
class Caret {
  public:
    /// The system has one caret, for the window with the keyboard: it is this window's between the two calls.
    void gotFocus(HWND window) { window_ = window; }
    void lostFocus();
    /// Does nothing while another window has the caret.
    void place(const Rect& cell);

  private:
    HWND window_ = nullptr;
    /// Where the caret is; empty before there is one.
    Rect cell_;
};

}  // namespace kavrelon
