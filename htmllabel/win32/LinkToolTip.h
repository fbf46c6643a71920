#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "support/win32/SystemLibrary.h"
#include "support/win32/WindowHandle.h"

namespace kavrelon {

/// The tooltip of a view port, created when there is first something to show.
class LinkToolTip {
  public:
    /// Shows the text while the mouse rests on `over`. The text is in the ANSI code page; an empty one means
    /// no tooltip.
    void show(HINSTANCE module, HWND over, const std::string& text);
    /// Hides the bubble until the mouse moves again: its link is no longer under the mouse.
    void hide() const;
    void destroy() { window_.reset(); }

  private:
    bool create(HINSTANCE module, HWND over);
    void send(UINT message, HWND over, const std::string& text) const;

    std::string text_;
    /// The common controls, before the window of theirs.
    std::optional<SystemLibrary> controls_;
    WindowHandle window_;
};

}  // namespace kavrelon
