#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>

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

/// Writes a text to a file, in UTF-8. Who reads the file meanwhile sees the old text or the new one, whole.
/// Throws SnapshotError.
void saveText(std::wstring_view text, const std::string& path);

}  // namespace kavrelon
