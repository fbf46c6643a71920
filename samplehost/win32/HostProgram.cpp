#include "samplehost/win32/HostProgram.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "samplehost/AboutText.h"
#include "samplehost/PlaySession.h"
#include "samplehost/demo/DemoSession.h"
#include "samplehost/win32/Connection.h"
#include "samplehost/win32/SettingsFile.h"
#include "samplehost/win32/Snapshot.h"
#include "samplehost/win32/UserMessages.h"
#include "support/Bytes.h"
#include "support/win32/WideText.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

// How often a remote system gets its turn that has no event but lives by the clock.
constexpr milliseconds kTick{20};
// How long the remote system may take to greet, which erases the screen and pictures on it, before the
// commands of `--command` are carried out and the text of `--type` is sent.
constexpr milliseconds kGreeting{500};
// The most in a block while nothing is painted; time ends most blocks before.
constexpr std::size_t kUnpaintedBlock = 64 * 1024;
// How much is taken between two looks at the clock, painted and not.
constexpr std::size_t kPaintedPiece = 512;
constexpr std::size_t kUnpaintedPiece = 4096;

/// As the title tells it: without the full stop.
std::string withoutStop(const std::string& sentence) {
    return sentence.substr(0, sentence.find_last_not_of('.') + 1);
}

std::string readRecording(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("The recording " + path + " could not be read.");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

HostProgram::HostProgram(const HostOptions& options) : options_(options) {
    if (options_.iniFile) options_.iniFile = namedSettingsFile(*options_.iniFile);
    openLog();
    classes_ = PlugInClasses::open(options_);
    openRemoteSystem();
    openRecording();
}

HostProgram::~HostProgram() = default;

int HostProgram::run() {
    openPlugIn();
    while (!leave_) {
        waitForWork();
        pumpMessages();
        followWindow();
        if (std::exchange(aboutWanted_, false) && !leave_) showAbout();
        serveRemoteSystem();
        meetDeadlines();
        if (restart_ && !leave_) startAgain();
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

void HostProgram::openRecording() {
    if (!options_.recordFile) return;
    recordFile_.open(*options_.recordFile, std::ios::binary);
    if (!recordFile_)
        throw std::runtime_error("The recording " + *options_.recordFile + " could not be written.");
    recorder_.emplace(recordFile_);
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
            // At the start there is no window yet that could be closed.
            auto connection = std::make_unique<Connection>(options_, [this] {
                pumpMessages();
                return !leave_;
            });
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
    if (translates()) {
        plugIn_->takeTextsAsShown();
        note("the server's characters are " + std::string(nameOf(options_.charset)));
        note(options_.exactColours ? "colours are shown as they come"
                                   : "colour resets (0, 39, 49) become the default colours");
    }
    view_.emplace(plugIn_->window(), !translates());
    view_->title(options_.sessionName());
    helpMenu_.addTo(terminalWindow());
    plugIn_->open();
    if (options_.columns > 0 && !plugIn_->sizeScreen(options_.columns, options_.lines)) {
        throw std::runtime_error("The plug-in's screen has a fixed size.");
    }
    lastAdvance_ = Clock::now();
    startDue_ = lastAdvance_ + kGreeting;
    if (waitsForPicture()) pictureDue_ = lastAdvance_ + milliseconds(options_.snapshotAfter);
}

void HostProgram::waitForWork() const {
    if (!backlog_.empty() || restart_ || aboutWanted_ || (remote_->ending() && !ended_)) return;
    const bool livesByClock = remoteReady_ == nullptr && !ended_;
    milliseconds longest = livesByClock ? kTick : milliseconds::max();
    for (const auto& due : {startDue_, pictureDue_, pacer_.due()}) {
        if (due) longest = std::min(longest, std::chrono::ceil<milliseconds>(*due - Clock::now()));
    }
    const DWORD timeout = longest == milliseconds::max()
                              ? INFINITE
                              : static_cast<DWORD>(std::max<milliseconds::rep>(longest.count(), 0));
    const bool listens = remoteReady_ != nullptr && !ended_;
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

/// What the user does to the window tells nobody: its size is read whenever messages were let through.
void HostProgram::followWindow() {
    view_->follow();
    helpMenu_.addTo(terminalWindow());
    const std::optional<TerminalView::Size> size = view_->size();
    if (!size || size == toldSize_) return;
    toldSize_ = size;
    remote_->resize(size->columns, size->rows);
}

HWND HostProgram::terminalWindow() const {
    return reinterpret_cast<HWND>(static_cast<std::intptr_t>(view_->handle()));
}

/// Not called from within the choice: it may have come while the plug-in was at work. The session waits
/// meanwhile, as it does while a menu is open.
void HostProgram::showAbout() {
    const ModuleFile library = plugIn_->file();
    AboutFacts facts{.hostVersion = ModuleFile::ofProgram().version,
                     .libraryVersion = library.version,
                     .libraryFile = library.path,
                     .plugIn = plugIn_->identity(),
                     .settingsFile = ParentIniFile(),
                     .profile = ParentConnectionProfile(),
                     .logFile = options_.logFile,
                     .recordFile = options_.recordFile};
    for (std::optional<std::string>* const file : {&facts.logFile, &facts.recordFile}) {
        if (*file) *file = fullPath(**file);
    }
    MessageBoxW(terminalWindow(), toWide(aboutText(facts)).c_str(), kProgramTitle,
                MB_OK | MB_ICONINFORMATION);
}

void HostProgram::serveRemoteSystem() {
    if (leave_) return;
    if (backlog_.empty()) {
        backlog_ = {};
        const auto now = Clock::now();
        const auto elapsed = std::chrono::floor<milliseconds>(now - lastAdvance_);
        lastAdvance_ += elapsed;
        remote_->advance(elapsed, backlog_);
        pacer_.arrived(backlog_.size());
    }
    if (!options_.paintAll) pacePainting();
    const std::optional<SessionEnd> ending = remote_->ending();
    if (!backlog_.empty()) {
        feedNext();
        followWindow();
    } else if (ending && !ended_) {
        end(*ending);
    }
}

void HostProgram::pacePainting() {
    const auto start = Clock::now();
    const PaintPacer::Step step = pacer_.next(start);
    if (step == PaintPacer::Step::Show || step == PaintPacer::Step::Release) {
        view_->show();
        pacer_.shown(start, Clock::now());
    }
    if (pacer_.holds()) view_->paint(false);
}

void HostProgram::feedNext() {
    if (const auto command = backlog_.takeCommand()) {
        carryOut(*command);
        return;
    }
    if (backlog_.takeInterruption()) {
        decoder_.reset();
        defaultColours_.reset();
        plugIn_->interrupt();
        return;
    }
    const auto end = Clock::now() + PaintPacer::kTurn;
    std::size_t left = pacer_.holds() ? kUnpaintedBlock : PaintPacer::kBlock;
    plugIn_->receive([&] {
        const std::size_t before = backlog_.size();
        const auto piece = nextPiece(end, left);
        left -= before - backlog_.size();
        return piece;
    });
}

/// The next bytes for the terminal; none when the block is to end.
std::span<const std::uint8_t> HostProgram::nextPiece(Clock::time_point end, std::size_t most) {
    const std::size_t pieceSize = pacer_.holds() ? kUnpaintedPiece : kPaintedPiece;
    while (Clock::now() < end) {
        const std::string_view piece = backlog_.takeBytes(std::min(most, pieceSize));
        if (piece.empty()) break;
        most -= piece.size();
        if (log_) log_->received(bytesOf(piece));
        const std::string_view shown = translated(piece);
        // All of it may be the beginning of something.
        if (shown.empty()) continue;
        if (recorder_) recorder_->received(shown);
        return bytesOf(shown);
    }
    return {};
}

/// What a piece of the stream is to the terminal. It stays valid until the next one.
std::string_view HostProgram::translated(std::string_view piece) {
    if (!translates()) return piece;
    decoded_.clear();
    decoder_.decode(piece, decoded_);
    if (options_.exactColours) return decoded_;
    shown_.clear();
    defaultColours_.rewrite(decoded_, shown_);
    return shown_;
}

void HostProgram::carryOut(const std::string& command) {
    if (log_) log_->command(bytesOf(command));
    plugIn_->processCommand(command);
}

void HostProgram::end(const SessionEnd& ending) {
    ended_ = true;
    note(ending.sentence);
    view_->title(options_.sessionName() + " has ended: " + withoutStop(ending.sentence) +
                 " (Enter starts again)");
    if (ending.failed) complainQuietly(ending.sentence);
    exitStatus_ = ending.failed ? 1 : 0;
    // Where a picture is to be taken, the program ends with it.
    if (options_.closeOnExit && !pictureDue_) leave_ = true;
}

/// Begins a new session, on a new screen. While there is none to be had, the last one stays as it is.
void HostProgram::startAgain() {
    view_->title(options_.sessionName() + " is being started");
    std::optional<SessionEnd> failure;
    try {
        openRemoteSystem();
    } catch (const std::exception& error) {
        failure = {error.what(), true};
    }
    // Only here: impatience may have pressed Enter more than once.
    restart_ = false;
    if (failure && !leave_) end(*failure);
    if (failure) return;
    note("session started again");
    ended_ = false;
    exitStatus_ = 0;
    backlog_ = {};
    pacer_ = {};
    decoder_.reset();
    defaultColours_.reset();
    toldSize_.reset();
    // The last window goes when the new one is there: a program without a window loses its place in front.
    const std::unique_ptr<PlugIn> last = std::move(plugIn_);
    openPlugIn();
}

void HostProgram::meetDeadlines() {
    const auto now = Clock::now();
    if (startDue_ && now >= *startDue_) {
        startDue_.reset();
        for (const std::string& command : options_.commands) carryOut(command);
        if (!options_.typedText.empty()) send(options_.typedText, true);
    }
    if (leave_ || !pictureDue_ || now < *pictureDue_) return;
    takeSnapshot();
    if (options_.snapshotEvery && !(ended_ && options_.closeOnExit)) {
        pictureDue_ = now + milliseconds(*options_.snapshotEvery);
    } else {
        leave_ = true;
    }
}

void HostProgram::takeSnapshot() {
    if (options_.snapshotIsText()) {
        saveScreenText();
    } else {
        saveSnapshot(topWindowOfThread(), *options_.snapshotFile);
    }
}

void HostProgram::saveScreenText() {
    std::optional<std::wstring> text = view_->text();
    if (!text) throw SnapshotError("The terminal does not tell the text of its screen.");
    if (text == savedText_) return;
    try {
        saveText(*text, *options_.snapshotFile);
        savedText_ = std::move(text);
    } catch (const SnapshotError& error) {
        // A reader has the file open: the next time will do.
        if (!savedText_) throw;
        note(error.what());
    }
}

void HostProgram::ParentSendData(const std::string& text) {
    if (ended_) {
        // Not from here: the plug-in that calls goes with the old session.
        restart_ = restart_ || text == "\r" || text == "\r\n";
        return;
    }
    if (!translates()) {
        send(text, view_->crLf());
        return;
    }
    const std::wstring wide = toWide(text);
    send(encode(std::u16string(wide.begin(), wide.end()), options_.charset), view_->crLf());
}

void HostProgram::send(const std::string& text, bool crLf) {
    if (log_) log_->sent(bytesOf(text));
    remote_->send(text, crLf);
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
    return options_.iniFile ? *options_.iniFile : defaultSettingsFile();
}

void HostProgram::unmatched(std::span<const std::uint8_t> bytes) {
    if (log_) log_->unmatched(bytes);
}

void HostProgram::failed(const std::string& what) {
    note(what);
}

void HostProgram::screenSized(int columns, int rows) {
    // The terminal knows better than its sequence, which may say too much or too little.
    if (view_->size()) {
        followWindow();
    } else {
        remote_->resize(columns, rows);
    }
}

void HostProgram::screenCovered() {
    if (pacer_.holds()) view_->paintLater();
}

void HostProgram::note(const std::string& text) {
    if (log_) log_->note(text);
}

}  // namespace kavrelon
