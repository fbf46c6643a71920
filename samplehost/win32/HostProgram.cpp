#include "samplehost/win32/HostProgram.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "samplehost/PlaySession.h"
#include "samplehost/demo/DemoSession.h"
#include "samplehost/win32/Connection.h"
#include "samplehost/win32/SettingsFile.h"
#include "samplehost/win32/Snapshot.h"
#include "support/Bytes.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

// How often a remote system gets its turn that has no event but lives by the clock.
constexpr milliseconds kTick{20};
// How long the last words of a session stay on the screen.
constexpr milliseconds kFarewell{2000};
// How long the remote system may take to greet, which erases the screen and pictures on it, before the
// commands of `--command` are carried out and the text of `--type` is sent.
constexpr milliseconds kGreeting{500};
// Small enough for the window to answer the user while much is received.
constexpr std::size_t kBlock = 4096;

std::string readRecording(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("The recording " + path + " could not be read.");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

HostProgram::HostProgram(const HostOptions& options) : options_(options) {
    openLog();
    classes_ = PlugInClasses::open(options_);
    openRemoteSystem();
}

HostProgram::~HostProgram() = default;

int HostProgram::run() {
    openPlugIn();
    while (!leave_) {
        waitForWork();
        pumpMessages();
        serveRemoteSystem();
        meetDeadlines();
    }
    // Only here: when the window was closed, a call of the plug-in was still running.
    plugIn_.reset();
    note("session closed");
    return exitStatus_;
}

void HostProgram::openLog() {
    if (!options_.logFile) return;
    logFile_.open(*options_.logFile, std::ios::binary);
    if (!logFile_) throw std::runtime_error("The log " + *options_.logFile + " could not be written.");
    log_.emplace(logFile_);
}

void HostProgram::openRemoteSystem() {
    switch (options_.source) {
        case HostOptions::Source::Demo:
            // Into the program's own folder only, not into one that the user has named.
            if (!options_.iniFile) storeDemoPicture(defaultSettingsFile());
            remote_ = std::make_unique<DemoSession>();
            break;
        case HostOptions::Source::Play:
            remote_ = std::make_unique<PlaySession>(readRecording(options_.playFile),
                                                    static_cast<int>(options_.rate.value_or(0)));
            break;
        case HostOptions::Source::Connect: {
            auto connection = std::make_unique<Connection>(options_);
            remoteReady_ = connection->readyEvent();
            remote_ = std::move(connection);
            break;
        }
    }
}

void HostProgram::openPlugIn() {
    PlugInObserver& observer = *this;
    plugIn_ = std::make_unique<PlugIn>(classes_->createPlugIn(), ParentObject::create(*this), observer);
    note("plug-in " + plugIn_->identity());
    plugIn_->open();
    if (options_.columns > 0 && !plugIn_->sizeScreen(options_.columns, options_.lines)) {
        throw std::runtime_error("The plug-in's screen has a fixed size.");
    }
    lastAdvance_ = Clock::now();
    startDue_ = lastAdvance_ + kGreeting;
    if (waitsForPicture()) pictureDue_ = lastAdvance_ + milliseconds(options_.snapshotAfter);
}

void HostProgram::waitForWork() const {
    const bool endUnnoted = remote_->ending() && !leaveDue_;
    if (!backlog_.empty() || endUnnoted) return;
    const bool livesByClock = remoteReady_ == nullptr;
    milliseconds longest = livesByClock ? kTick : milliseconds::max();
    for (const auto& due : {startDue_, pictureDue_, leaveDue_}) {
        if (due) longest = std::min(longest, std::chrono::ceil<milliseconds>(*due - Clock::now()));
    }
    const DWORD timeout = longest == milliseconds::max()
                              ? INFINITE
                              : static_cast<DWORD>(std::max<milliseconds::rep>(longest.count(), 0));
    const bool listens = remoteReady_ != nullptr && !leaveDue_;
    MsgWaitForMultipleObjectsEx(listens ? 1 : 0, &remoteReady_, timeout, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void HostProgram::pumpMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) leave_ = true;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void HostProgram::serveRemoteSystem() {
    if (leave_) return;
    if (backlog_.empty()) {
        backlog_ = {};
        const auto now = Clock::now();
        const auto elapsed = std::chrono::floor<milliseconds>(now - lastAdvance_);
        lastAdvance_ += elapsed;
        remote_->advance(elapsed, backlog_);
    }
    if (backlog_.empty()) {
        noteEnding();
    } else {
        feedNext();
    }
}

void HostProgram::feedNext() {
    if (const auto command = backlog_.takeCommand()) {
        carryOut(*command);
        return;
    }
    const auto block = bytesOf(backlog_.takeBytes(kBlock));
    if (log_) log_->received(block);
    plugIn_->receive(block);
}

void HostProgram::carryOut(const std::string& command) {
    if (log_) log_->command(bytesOf(command));
    plugIn_->processCommand(command);
}

void HostProgram::noteEnding() {
    const std::optional<SessionEnd> ending = remote_->ending();
    if (!ending || leaveDue_) return;
    note(ending->sentence);
    plugIn_->print("\r\n" + ending->sentence + "\r\n");
    if (ending->failed) {
        std::fprintf(stderr, "samplehost: %s\n", ending->sentence.c_str());
        exitStatus_ = 1;
    }
    // Where a picture is to be taken, the program ends with it, so that it shows the last words too.
    leaveDue_ = pictureDue_ ? Clock::time_point::max() : Clock::now() + kFarewell;
}

void HostProgram::meetDeadlines() {
    const auto now = Clock::now();
    if (leaveDue_ && now >= *leaveDue_) leave_ = true;
    if (startDue_ && now >= *startDue_) {
        startDue_.reset();
        for (const std::string& command : options_.commands) carryOut(command);
        if (!options_.typedText.empty()) ParentSendData(options_.typedText);
    }
    if (leave_ || !pictureDue_ || now < *pictureDue_) return;
    saveSnapshot(topWindowOfThread(), *options_.snapshotFile);
    leave_ = true;
}

void HostProgram::ParentSendData(const std::string& text) {
    if (log_) log_->sent(bytesOf(text));
    remote_->send(text);
}

void HostProgram::ParentSendBreak() {
    note("break sent");
    remote_->sendBreak();
}

void HostProgram::ParentSendCommand(const std::string& command) {
    note("plug-in command: " + command);
}

void HostProgram::ParentWindowClosed() {
    note("window closed by the user");
    leave_ = true;
}

std::string HostProgram::ParentConnectionProfile() {
    return options_.profile.value_or("default");
}

std::string HostProgram::ParentIniFile() {
    return options_.iniFile ? fullPath(*options_.iniFile) : defaultSettingsFile();
}

void HostProgram::unmatched(std::span<const std::uint8_t> bytes) {
    if (log_) log_->unmatched(bytes);
}

void HostProgram::failed(const std::string& what) {
    note(what);
}

void HostProgram::screenSized(int columns, int rows) {
    remote_->resize(columns, rows);
}

void HostProgram::note(const std::string& text) {
    if (log_) log_->note(text);
}

}  // namespace kavrelon
