#pragma once

#include <windows.h>

#include <string_view>

#include "gdi/GdiHandles.h"

namespace kavrelon {

class TermWindowEvents;

/// The terminal window's menus: File, Font, Printer, Knowledge Base and Remote in its bar, and the context
/// menu.
class TermMenus {
  public:
    /// Builds the menus. They are this object's until a window takes the bar.
    TermMenus();

    HMENU bar() const { return bar_; }
    /// A window has the bar now, and destroys it with itself.
    void handOver() { static_cast<void>(owned_.release()); }
    /// The window and the bar with it are gone; the calls below do nothing any more.
    void forget() { bar_ = nullptr; }

    void checkFontEntry(int index) const;
    void checkPrinterTypeEntry(int index) const;
    void setScreenWidthCaption(std::string_view caption) const;
    /// Returns whether that changes the bar, which is to be drawn again then.
    bool enableRemote(bool enabled) const;
    /// Fills the menu that is about to open, where it is one whose items come and go.
    void fill(HMENU popup, TermWindowEvents& events) const;
    /// Pops the context menu up at the mouse, for a window that gets the choice as a command.
    static void popUp(HWND window, bool copyEnabled, bool pasteEnabled);

    /// Whether the entry with this command number changes the whole picture.
    static bool redraws(WORD command);
    /// Calls the handler of the entry with this command number, if there is one.
    static void click(WORD command, TermWindowEvents& events) noexcept;

  private:
    Menu owned_;
    HMENU bar_;
    HMENU printer_ = nullptr;
    HMENU knowledgeBase_ = nullptr;
    HMENU remote_ = nullptr;
};

}  // namespace kavrelon
