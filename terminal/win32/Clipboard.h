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
    /// With `bytes`, those that a terminal put on the clipboard, where there are some; else its text in the
    /// ANSI code page; nothing when it holds none.
    std::optional<std::string> text(bool bytes) const;
    /// Replaces the content by screen text. Other programs get the characters that the screen shows for its
    /// bytes (those that want single-byte text as much of it as their code page has), terminals the bytes
    /// themselves. False when nothing could be stored.
    bool setText(const std::string& text);

    /// The format of those bytes: their number, 32 bits wide, then the bytes.
    static UINT bytesFormat();

  private:
    bool open_ = false;
};

}  // namespace kavrelon
