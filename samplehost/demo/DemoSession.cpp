#include "samplehost/demo/DemoSession.h"

#include <algorithm>
#include <utility>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// How long the menu is shown when unattended. Halfway the highlight moves to the next page.
constexpr milliseconds kMenuTime{5000};

constexpr std::string_view kWalkingNote = "It walks through its pages until you press a key.";
constexpr std::string_view kSteeringNote = "Up, Down and Enter, or a digit.";

void drawTitle(const DemoScreen& screen, const DemoPage& page, int index, int count) {
    TerminalWriter& out = screen.out;
    out.at(2, 0).style({Ink::White}).text(page.title());
    const std::string place = std::to_string(index + 1) + " of " + std::to_string(count);
    out.at(kPageColumns - 2 - static_cast<int>(place.size()), 0);
    out.style({Ink::White, Ink::Black, Look::Dim}).text(place);
    out.style({Ink::Cyan, Ink::Black, Look::Dim}).horizontalRule(2, 1, kPageColumns - 4, FrameLines::Double);
}

void drawFoot(const DemoScreen& screen, const DemoPage& page) {
    TerminalWriter& out = screen.out;
    out.style({Ink::White, Ink::Black, Look::Dim});
    out.horizontalRule(2, kPageRows - 2, kPageColumns - 4, FrameLines::Single);
    out.at(2, kPageRows - 1).text(page.keys());
    out.at(kPageColumns - 2 - static_cast<int>(kPageKeys.size()), kPageRows - 1).text(kPageKeys);
}

}  // namespace

DemoSession::DemoSession() : DemoSession(makeDemoPages()) {}

DemoSession::DemoSession(std::vector<std::unique_ptr<DemoPage>> pages) : pages_(std::move(pages)) {
    for (const auto& page : pages_) menu_.add({std::string(page->title()), std::string(page->summary())});
    menu_.add({"Log off", "Ends the session."});
}

DemoSession::~DemoSession() = default;

void DemoSession::advance(milliseconds elapsed, RemoteOutput& received) {
    if (!started_) {
        logOn();
    } else if (!ending_) {
        const auto secondsBefore = std::chrono::duration_cast<seconds>(connected_);
        connected_ += elapsed;
        shown_ += elapsed;
        if (current_ >= 0) {
            pages_[static_cast<std::size_t>(current_)]->advance(screen(), elapsed);
        } else if (std::chrono::duration_cast<seconds>(connected_) != secondsBefore) {
            menu_.showClock(screen(), connected_);
        }
        if (unattended_) walk();
    }
    received.append(std::move(outgoing_));
}

void DemoSession::send(std::string_view text, bool) {
    if (!started_ || ending_ || text.empty()) return;
    if (std::exchange(unattended_, false) && current_ < 0) menu_.showNote(screen(), kSteeringNote);
    if (current_ < 0 && text.size() > 1) {
        // A function key or a paste: it is not for the menu, and is shown so that the user sees what arrives.
        menu_.showNote(screen(), "Received " + spelledOut(text));
        return;
    }
    for (const char key : text) {
        if (ending_) return;
        if (current_ >= 0) {
            pageKey(key);
        } else {
            menuKey(key);
        }
    }
}

void DemoSession::sendBreak() {
    if (!started_ || ending_) return;
    unattended_ = false;
    leavePage();
    showMenu();
    menu_.showNote(screen(), "Break.");
}

void DemoSession::resize(int columns, int rows) {
    if (columns == columns_ && rows == rows_) return;
    columns_ = columns;
    rows_ = rows;
    if (started_ && !ending_ && current_ < 0) showMenu();
}

DemoScreen DemoSession::screen() {
    const bool whole = current_ >= 0 && pages_[static_cast<std::size_t>(current_)]->wantsWholeScreen();
    const int spareColumns = whole ? 0 : std::max(0, columns_ - kPageColumns);
    const int spareRows = whole ? 0 : std::max(0, rows_ - kPageRows);
    writer_.setOrigin(spareColumns / 2, spareRows / 2);
    return {writer_, columns_, rows_};
}

void DemoSession::logOn() {
    started_ = true;
    if (columns_ < kPageColumns || rows_ < kPageRows) {
        columns_ = std::max(columns_, kPageColumns);
        rows_ = std::max(rows_, kPageRows);
        writer_.sizeScreen(columns_, rows_);
    }
    writer_.logOn("demo");
    writer_.addKnowledgeBase("http://localhost/help", "Help for the Demo");
    writer_.addRemote("notepad.exe", "Notes").addRemote("winver.exe", "About this Computer");
    showMenu();
}

void DemoSession::logOff() {
    writer_.clearScreen().logOff();
    screen().out.at(2, 1).style({Ink::White, Ink::Black, Look::Dim}).text("Logged off. Enter logs on again.");
    ending_ = SessionEnd{"The demo session has been logged off.", false};
}

void DemoSession::showMenu() {
    current_ = -1;
    shown_ = {};
    writer_.clearScreen();
    menu_.draw(screen(), connected_);
    menu_.showNote(screen(), unattended_ ? kWalkingNote : kSteeringNote);
}

void DemoSession::showPage(int index) {
    current_ = index;
    nextOnWalk_ = (index + 1) % pageCount();
    shown_ = {};
    columnsBeforePage_ = columns_;
    rowsBeforePage_ = rows_;
    menu_.remember(index);
    DemoPage& page = *pages_[static_cast<std::size_t>(index)];
    const DemoScreen onScreen = screen();
    writer_.clearScreen();
    if (!page.wantsWholeScreen()) {
        drawTitle(onScreen, page, index, pageCount());
        drawFoot(onScreen, page);
    }
    page.start(onScreen, unattended_);
}

void DemoSession::leavePage() {
    if (current_ < 0) return;
    pages_[static_cast<std::size_t>(current_)]->leave(screen());
    current_ = -1;
    columns_ = columnsBeforePage_;
    rows_ = rowsBeforePage_;
}

void DemoSession::choose(int entry) {
    leavePage();
    if (entry < pageCount()) {
        showPage(entry);
    } else {
        logOff();
    }
}

void DemoSession::walk() {
    if (current_ >= 0) {
        if (shown_ < pages_[static_cast<std::size_t>(current_)]->watchTime()) return;
        leavePage();
        showMenu();
    } else if (shown_ >= kMenuTime) {
        choose(nextOnWalk_);
    } else if (shown_ >= kMenuTime / 2) {
        menu_.highlight(screen(), nextOnWalk_);
    }
}

void DemoSession::menuKey(char key) {
    if (key == demokey::kUp || key == demokey::kLeft) {
        menu_.highlight(screen(), menu_.highlighted() - 1);
    } else if (key == demokey::kDown || key == demokey::kRight) {
        menu_.highlight(screen(), menu_.highlighted() + 1);
    } else if (key == demokey::kEnter) {
        choose(menu_.highlighted());
    } else if (key >= '0' && key <= '9') {
        // As on the keyboard: 0 is the tenth.
        const int entry = (key - '0' + 9) % 10;
        if (entry < menu_.size()) choose(entry);
    }
}

void DemoSession::pageKey(char key) {
    DemoPage& page = *pages_[static_cast<std::size_t>(current_)];
    if (page.key(screen(), key)) return;
    if (key == demokey::kEscape) {
        leavePage();
        showMenu();
    } else if (key == demokey::kLeft || key == demokey::kRight) {
        const int step = key == demokey::kRight ? 1 : pageCount() - 1;
        choose((current_ + step) % pageCount());
    }
}

}  // namespace kavrelon
