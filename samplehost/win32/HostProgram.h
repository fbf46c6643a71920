#pragma once

#include <windows.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "samplehost/Charset.h"
#include "samplehost/DefaultColours.h"
#include "samplehost/HostOptions.h"
#include "samplehost/PaintPacer.h"
#include "samplehost/RemoteSystem.h"
#include "samplehost/SessionLog.h"
#include "samplehost/SessionRecording.h"
#include "samplehost/com/ParentObject.h"
#include "samplehost/com/PlugIn.h"
#include "samplehost/com/PlugInClasses.h"
#include "samplehost/com/TerminalView.h"
#include "samplehost/win32/HelpMenu.h"

namespace kavrelon {

/// One run of the sample host: it connects a remote system with the plug-in, and has the message loop.
class HostProgram final : private ParentRequests, private PlugInObserver {
  public:
    /// Opens the log, finds the plug-in and connects. Throws with a sentence for the user.
    explicit HostProgram(const HostOptions& options);
    ~HostProgram() override;
    HostProgram(const HostProgram&) = delete;
    HostProgram& operator=(const HostProgram&) = delete;

    /// Runs the session until the window is closed, or the picture is taken, or the options want the program
    /// to end with the session. A session that has ended leaves its window as it was, and begins again when
    /// the user presses Enter. Returns the program's exit status: 0, or 1 when the last session broke off.
    int run();

  private:
    using Clock = std::chrono::steady_clock;

    // Requests of the plug-in
    void ParentSendData(const std::string& text) override;
    void ParentSendBreak() override;
    void ParentSendCommand(const std::string& command) override;
    void ParentWindowClosed() override;
    std::string ParentConnectionProfile() override;
    std::string ParentIniFile() override;

    // What becomes of the stream
    void unmatched(std::span<const std::uint8_t> bytes) override;
    void failed(const std::string& what) override;
    void screenSized(int columns, int rows) override;
    void screenCovered() override;

    void openLog();
    void openRecording();
    void openRemoteSystem();
    void openPlugIn();
    void waitForWork() const;
    void pumpMessages();
    void followWindow();
    void showAbout();
    void serveRemoteSystem();
    void pacePainting();
    void feedNext();
    std::string_view translated(std::string_view piece);
    std::span<const std::uint8_t> nextPiece(Clock::time_point end, std::size_t most);
    void send(const std::string& text, bool crLf);
    void carryOut(const std::string& command);
    void end(const SessionEnd& ending);
    void startAgain();
    void meetDeadlines();
    void takeSnapshot();
    void saveScreenText();
    HWND terminalWindow() const;
    bool translates() const { return options_.source == HostOptions::Source::Connect; }
    bool waitsForPicture() const { return options_.snapshotFile.has_value(); }
    void note(const std::string& text);

    HostOptions options_;
    std::ofstream logFile_;
    std::optional<SessionLog> log_;
    std::ofstream recordFile_;
    std::optional<SessionRecorder> recorder_;
    std::unique_ptr<PlugInClasses> classes_;
    std::unique_ptr<RemoteSystem> remote_;
    HANDLE remoteReady_ = nullptr;
    HelpMenu helpMenu_{[this] { aboutWanted_ = true; }};
    std::unique_ptr<PlugIn> plugIn_;
    std::optional<TerminalView> view_;
    std::optional<TerminalView::Size> toldSize_;

    RemoteOutput backlog_;
    PaintPacer pacer_;
    CharsetDecoder decoder_{options_.charset};
    DefaultColours defaultColours_;
    std::string decoded_;
    std::string shown_;
    Clock::time_point lastAdvance_;
    std::optional<Clock::time_point> startDue_;
    std::optional<Clock::time_point> pictureDue_;
    std::optional<std::wstring> savedText_;
    bool aboutWanted_ = false;
    bool ended_ = false;
    bool restart_ = false;
    bool leave_ = false;
    int exitStatus_ = 0;
};

}  // namespace kavrelon
