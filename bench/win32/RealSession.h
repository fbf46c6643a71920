#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>

#include "bench/Streams.h"
#include "headless/RecordingParent.h"
#include "headless/TerminalSink.h"
#include "plugin/clsTerminal.h"
#include "recognizer/EscapeRecognizer.h"
#include "recognizer/EscapeTree.h"
#include "terminal/win32/Win32Platform.h"

namespace kavrelon::bench {

/// A session of the plug-in on real windows, without COM. Not connected when it is made.
class RealSession {
  public:
    RealSession();
    ~RealSession();
    RealSession(const RealSession&) = delete;
    RealSession& operator=(const RealSession&) = delete;

    /// Makes the calls of a host that connects, and lets the window be painted.
    void connect();
    /// Sets the screen's size, and gives the window an outer size that holds it.
    void size(ScreenExtent extent, Size outer);
    /// Feeds a stream in blocks, after each of which messages are let through.
    void play(std::string_view stream);
    /// Hands the terminal a sequence without fields, and lets the window be painted.
    void sequence(std::int16_t row);
    void processMessages() { platform_.processMessages(); }

    frmTerm& form() const { return *terminal_.currentWindow(); }
    Screen& screen() const { return form().screen(); }
    ProfileFile& profiles() { return platform_.profileFile(); }
    const std::string& settings() const { return settings_; }
    /// The window that was shown last.
    static HWND window();

  private:
    std::string settings_;
    Win32Platform platform_{GetModuleHandleA(nullptr)};
    clsTerminal terminal_{platform_, "1"};
    TerminalSink sink_{terminal_};
    EscapeTree tree_;
    EscapeRecognizer recognizer_{tree_, sink_};
};

}  // namespace kavrelon::bench
