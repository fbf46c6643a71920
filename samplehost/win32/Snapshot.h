#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace kavrelon {

/// A picture that could not be taken or written; the text is a sentence for the user.
class SnapshotError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The topmost visible window of this thread, or the window that owns it; null when there is none.
HWND topWindowOfThread();

/// Writes the window as the user sees it, with frame and menu, to a PNG file. Throws SnapshotError.
void saveSnapshot(HWND window, const std::string& path);

}  // namespace kavrelon
