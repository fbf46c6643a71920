#pragma once

#include <windows.h>

#include <string>

#include "support/win32/WindowHandle.h"

namespace kavrelon {

/// The tooltip of a view port, made when there is first something to tell.
class LinkToolTip {
  public:
    /// What the mouse must rest on; the text is one of the ANSI code page, empty for no tooltip.
    void show(HINSTANCE module, HWND over, const std::string& text);
    /// Takes the bubble away until the mouse moves again: what it told of is no longer under the mouse.
    void hide() const;
    void destroy() { window_.reset(); }

  private:
    bool create(HINSTANCE module, HWND over);
    void send(UINT message, HWND over, const std::string& text) const;

    std::string text_;
    WindowHandle window_;
};

}  // namespace kavrelon
