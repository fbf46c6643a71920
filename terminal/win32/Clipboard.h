#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace kavrelon {

/// The clipboard, open for a window during a scope. Another program may hold it for a moment, so opening is
/// tried for a tenth of a second.
class Clipboard {
  public:
    explicit Clipboard(HWND owner);
    ~Clipboard() {
        if (open_) CloseClipboard();
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    explicit operator bool() const { return open_; }

    bool clear() { return open_ && EmptyClipboard() != FALSE; }
    /// The text on the clipboard, in the ANSI code page; nothing when it holds none.
    std::optional<std::string> text() const;
    /// Replaces the content by screen text: bytes mean the characters that the screen shows for them.
    /// Programs that want single-byte text get as much of it as their code page has. False when nothing could
    /// be stored.
    bool setText(const std::string& text);

  private:
    bool open_ = false;
};

}  // namespace kavrelon
