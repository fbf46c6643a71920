#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "helpbox/HelpWindow.h"
#include "support/Geometry.h"

namespace kavrelon {

class HeadlessHelpWindow;
class HeadlessWindow;

/// What headless windows share: one another, the clipboard, the bell and the mouse.
struct HeadlessDesktop {
    /// The windows there are. They enter and leave the lists themselves.
    std::vector<HeadlessWindow*> terminalWindows;
    std::vector<HeadlessHelpWindow*> helpWindows;
    HeadlessWindow* active = nullptr;
    WindowId lastId = 0;

    /// What help windows ask about other windows.
    std::function<Rect(WindowId)> rectangleOf = [](WindowId) { return Rect{}; };
    std::function<bool(WindowId)> isShown = [](WindowId) { return true; };

    std::string clipboard;
    /// Another program holds the clipboard and does not let go.
    bool clipboardHeld = false;
    /// Called with what is put on the clipboard.
    std::function<void(const std::string&)> onClipboard = [](const std::string&) {};
    /// Called when the bell sounds, with hertz and milliseconds.
    std::function<void(int, int)> onBeep = [](int, int) {};
    /// Called with what the user is told. It may close the window.
    std::function<void(const std::string&)> onMessage = [](const std::string&) {};
    /// Called with what the user is asked, before the answer is given. It may close the window.
    std::function<void(const std::string&)> onQuestion = [](const std::string&) {};
    /// The user's answer to questions.
    bool answer = false;
    /// What the user was asked, oldest first.
    std::vector<std::string> questions;

    Point cursor;
    std::int16_t heldButtons = 0;

    /// Called where a real desktop sends messages, in which a host may do anything: before a window is
    /// created, and while one is closed, shown, moved, activated or asks the user. It throws only in place
    /// of a window that cannot be created.
    std::function<void()> onMessages = [] {};
};

}  // namespace kavrelon
