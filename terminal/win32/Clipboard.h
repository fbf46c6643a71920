#pragma once

#include <windows.h>

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

    void clear() { EmptyClipboard(); }

  private:
    bool open_ = false;
};

}  // namespace kavrelon
