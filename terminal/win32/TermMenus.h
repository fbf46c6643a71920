#pragma once

#include <windows.h>

#include <string_view>

#include "gdi/GdiHandles.h"

namespace kavrelon {

class TermWindowEvents;

/// The terminal window's menu bar: File, Font and Printer.
class TermMenus {
  public:
    /// Builds the menus. They are this object's until a window takes the bar.
    TermMenus();

    HMENU bar() const { return bar_; }
    /// A window has the bar now, and destroys it with itself.
    void handOver() { owned_.release(); }
    /// The window and the bar with it are gone; the calls below do nothing any more.
    void forget() { bar_ = nullptr; }

    void checkFontEntry(int index) const;
    void checkPrinterTypeEntry(int index) const;
    void setScreenWidthCaption(std::string_view caption) const;

    /// Whether the entry with this command number changes the whole picture.
    static bool redraws(WORD command);
    /// Calls the handler of the entry with this command number, if there is one.
    static void click(WORD command, TermWindowEvents& events) noexcept;

  private:
    Menu owned_;
    HMENU bar_;
};

}  // namespace kavrelon
