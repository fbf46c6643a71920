#pragma once

#include <windows.h>

#include <array>
#include <string_view>

#include "gdi/GdiHandles.h"
#include "terminal/MenuItems.h"

namespace kavrelon {

/// The menus of a terminal window's bar and its context menu, as the platform has them.
class TermMenus {
  public:
    /// Builds the menus. They are this object's until a window takes the bar.
    TermMenus();

    HMENU bar() const { return bar_; }
    /// A window has the bar now, and destroys it with itself.
    void handOver() { static_cast<void>(owned_.release()); }
    /// The window is gone, and the bar with it; the calls below do nothing from now on.
    void forget() { bar_ = nullptr; }

    void checkFontEntry(int index) const;
    void checkPrinterTypeEntry(int index) const;
    void checkCRtoCRLF(bool on) const;
    void setScreenWidthCaption(std::string_view caption) const;
    /// Returns whether that changes the bar, which is to be drawn again then.
    bool enableRemote(bool enabled) const;
    /// Gives the menu that is about to open the items that it is to show from now on.
    void fill(HMENU popup, TermWindowEvents& events, InstalledFaces& faces) const;
    /// Pops the context menu up at the mouse, for a window that gets the choice as a command.
    static void popUp(HWND window, bool copyEnabled, bool pasteEnabled);

  private:
    Menu owned_;
    HMENU bar_;
    std::array<HMENU, kBarCaptions.size()> popups_{};
};

}  // namespace kavrelon
