#pragma once

#include <optional>
#include <string>

#include "kavrelon.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// The terminal's current window, as far as a host has a hand in it. The terminal may put another window in
/// its place at any time: `follow` gives that one what the first was given. With another plug-in than the
/// terminal nothing has an effect.
class TerminalView {
  public:
    struct Size {
        int columns = 0;
        int rows = 0;
        bool operator==(const Size&) const = default;
    };

    /// `window` may be null. With `pasteBytes` a paste sends the bytes that were copied off a terminal.
    TerminalView(ComPtr<ITerminalWindow> window, bool pasteBytes);

    /// To be called after whatever may have changed the current window.
    void follow();
    /// The window's platform handle as a number; 0 while there is none.
    long handle() const { return handle_; }
    /// The text that comes first in the title.
    void title(const std::string& text);
    /// Lets the window paint from now on, or not. A minimised one is left alone: it paints nothing.
    void paint(bool on);
    /// Paints all of the window, although it paints nothing.
    void show();
    /// Lets the window paint from now on, and paints it when messages are let through.
    void paintLater();
    /// Nothing while there is no window.
    std::optional<Size> size() const;
    /// What the screen shows, in rows with CR LF behind each; nothing while it cannot be read.
    std::optional<std::wstring> text() const;
    /// Whether the user has chosen that Enter sends CR LF.
    bool crLf() const;

  private:
    bool minimised() const;
    void showTitle();

    ComPtr<ITerminalWindow> window_;
    bool pasteBytes_;
    long handle_ = 0;
    std::string ownTitle_;
    std::string title_;
};

}  // namespace kavrelon
