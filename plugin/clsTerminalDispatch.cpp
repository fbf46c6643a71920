#include "plugin/clsTerminal.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <variant>

#include "support/AsciiText.h"
#include "support/Conversions.h"
#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

/// The remote side writes a line break as one of two characters.
std::string withLineBreaks(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\xFE' || c == '\x1E') {
            result += "\r\n";
        } else {
            result += c;
        }
    }
    return result;
}

void setRendition(Screen& screen, std::string_view part) {
    constexpr std::uint8_t kFirstPrintable = 32;
    if (part.empty()) raise(RuntimeErrorNumber::InvalidProcedureCall);
    if (static_cast<std::uint8_t>(part.front()) < kFirstPrintable) {
        screen.term_setattr(part);
        return;
    }
    const std::int16_t code = toInt16(part);
    if (code < 0 || code > 255) raise(RuntimeErrorNumber::InvalidProcedureCall);
    screen.setRendition(static_cast<std::uint8_t>(code));
}

void setAttributes(Screen& screen, const EscapeArguments& args) {
    // Field by field: the same parts as joining those that are not empty with ";" and splitting the result.
    for (const std::string_view field : args.all()) {
        if (field.empty()) continue;
        const char* next = field.data();
        const char* const end = next + field.size();
        for (;; ++next) {
            // Nearly all parts are a few digits: those are read on the way to the end of the part.
            const char* const part = next;
            unsigned code = 0;
            for (; next != end && isAsciiDigit(*next) && code <= 255; ++next) {
                code = code * 10 + static_cast<unsigned>(*next - '0');
            }
            if (next != part && code <= 255 && (next == end || *next == ';')) {
                screen.setRendition(static_cast<std::uint8_t>(code));
            } else {
                next = std::find(next, end, ';');
                setRendition(screen, {part, next});
            }
            if (next == end) break;
        }
    }
}

void setCursor(Screen& screen, const EscapeArguments& args) {
    const std::int16_t row = toInt16(args.at(1));
    const std::int16_t column = toInt16(args.at(2));
    screen.SetCursor(narrowToInt16(column - 1), narrowToInt16(row - 1));
}

void carryOut(Screen& screen, ScreenAction action, const EscapeArguments& args) {
    switch (action) {
        case ScreenAction::Home:
            return screen.SetCursor(0, 0);
        case ScreenAction::CursorPosition:
        case ScreenAction::ForceCursorPosition:
            return setCursor(screen, args);
        // By one cell, whatever count the sequence has.
        case ScreenAction::CursorUp:
            return screen.CursorY(screen.CursorY() - 1);
        case ScreenAction::CursorDown:
            return screen.CursorY(screen.CursorY() + 1);
        case ScreenAction::CursorForward:
            return screen.CursorX(screen.CursorX() + 1);
        case ScreenAction::CursorBack:
            return screen.CursorX(screen.CursorX() - 1);
        case ScreenAction::ClearEndOfLine:
            return screen.ClearEndOfLine();
        case ScreenAction::ClearStartOfLine:
            return screen.ClearStartOfLine();
        case ScreenAction::ClearLine:
            return screen.ClearLine();
        case ScreenAction::ClearBeginOfScreen:
            return screen.ClearBeginOfScreen();
        case ScreenAction::SetAttribute:
            return setAttributes(screen, args);
    }
}

void showHelpBox(frmTerm& window, const EscapeArguments& args) {
    const std::string text = withLineBreaks(args.at(6));
    const std::int16_t box = toInt16(args.at(1));
    const std::int16_t top = toInt16(args.at(2));
    const std::int16_t left = toInt16(args.at(3));
    const std::int16_t width = toInt16(args.at(4));
    const std::int16_t height = toInt16(args.at(5));
    window.ShowHelpBox(box, top, left, width, height, text);
}

void carryOut(frmTerm& window, WindowAction action, const EscapeArguments& args) {
    switch (action) {
        case WindowAction::ShowHelpBox:
            return showHelpBox(window, args);
        case WindowAction::HideHelpBox:
            return window.HideHelpBox(toInt16(args.at(1)));
        case WindowAction::AddKB:
            return window.AddKB(std::string(args.at(1)), std::string(args.at(2)));
        case WindowAction::ClearKB:
            return window.ClearKB();
        case WindowAction::AddRemote:
            return window.AddRemote(std::string(args.at(1)), std::string(args.at(2)));
        case WindowAction::ClearRemote:
            return window.ClearRemote();
    }
}

}  // namespace

std::int16_t clsTerminal::IClientEscTree_EscTreeCount() const {
    return escapeTable().EscTreeCount();
}

std::string clsTerminal::IClientEscTree_EscTreeString(std::int16_t Index) const {
    return escapeTable().row(Index).pattern;
}

std::string clsTerminal::IClientEscTree_EscTreeDesc(std::int16_t Index) const {
    return escapeTable().row(Index).description;
}

void clsTerminal::IClientEscTree_EscTreeProcess(std::int16_t Index, const EscapeArguments& args) {
    std::visit([&](auto action) { process(action, args); }, escapeTable().row(Index).action);
}

// A window that the user has closed drops what reaches it.

void clsTerminal::process(ScreenAction action, const EscapeArguments& args) {
    // No messages are sent, and these come too often to pay for holding on to the window.
    if (current_ == nullptr) raise(RuntimeErrorNumber::ObjectNotSet);
    frmTerm& window = *current_;
    if (!window.isLoaded()) return;
    window.screen().inBurst([&] { carryOut(window.screen(), action, args); });
}

void clsTerminal::process(EraseAction action, const EscapeArguments&) {
    const std::shared_ptr<frmTerm> window = currentWindow();
    if (!window->isLoaded()) return;
    window->DataReceiveStart();
    if (action == EraseAction::ClearScreen) {
        window->screen().ClearScreen();
    } else {
        window->screen().ClearEndOfScreen();
    }
    window->DataReceiveEnd();
}

void clsTerminal::process(WindowAction action, const EscapeArguments& args) {
    const std::shared_ptr<frmTerm> window = currentWindow();
    if (window->isLoaded()) carryOut(*window, action, args);
}

void clsTerminal::process(PluginAction action, const EscapeArguments& args) {
    switch (action) {
        case PluginAction::LogOff:
            return SetLogon(false);
        case PluginAction::LogOn:
            return SetLogon(true);
        case PluginAction::SizeScreen:
            return sizeScreen(args);
        case PluginAction::NewScreen:
            return newScreen();
        case PluginAction::CloseScreen:
            return closeScreen();
        case PluginAction::SetFunctionKey:
            return SetFunctionKey(args.at(1), args.at(2), false);
    }
}

void clsTerminal::sizeScreen(const EscapeArguments& args) {
    const std::int16_t width = toInt16(args.at(1));
    const std::int16_t height = toInt16(args.at(2));
    rememberedWidth_ = width;
    rememberedHeight_ = height;
    const std::shared_ptr<frmTerm> window = currentWindow();
    window->screen().ScreenSize(width, rememberedHeight_);
}

// All or nothing: a screen that cannot be made leaves the window below as it was, with its cursor blinking.
void clsTerminal::newScreen() {
    static_cast<void>(currentWindow());
    const std::shared_ptr<frmTerm> window = NewTerminalWindow();
    if (window == nullptr) return;
    const auto top = static_cast<std::size_t>(topIndex_);
    const std::shared_ptr<frmTerm> below = windows_[top - 1];
    const bool blinked = below->cursorBlinks();
    const bool wasActive = below->TermActive();
    try {
        below->TurnOnOffCursor(false);
        below->DataReceiveEnd();
        open(*window, below->PrevWindowState());
    } catch (...) {
        // Unless somebody has done so meanwhile. The index goes down last, so that nobody takes this for the
        // closing of the first window.
        if (windows_[top] == window && topIndex_ == static_cast<int>(top)) popWindow();
        below->TurnOnOffCursor(blinked);
        if (wasActive && !below->TermActive()) {
            below->MakeActive();
            below->setFocus();
        }
        throw;
    }
}

void clsTerminal::open(frmTerm& window, WindowState state) {
    window.setWindowState(state);
    window.screen().ScreenSize(rememberedWidth_, rememberedHeight_);
    window.DisplayTerminalWindows();
    window.TerminalOpen();
    window.Logon(loggedOn_);
    window.MakeActive();
    window.setFocus();
}

void clsTerminal::closeScreen() {
    if (topIndex_ <= 0) return;
    const std::shared_ptr<frmTerm> window = popWindow();
    if (window == nullptr) return;
    window->MakeActive();
    window->TurnOnOffCursor(true);
    window->setFocus();
}

}  // namespace kavrelon
