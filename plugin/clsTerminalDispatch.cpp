#include <algorithm>
#include <string>

#include "plugin/clsTerminal.h"
#include "support/Conversions.h"

namespace kavrelon {
namespace {

/// What an action acts on.
enum class Target { Nothing, Plugin, Window };

constexpr Target targetOf(EscapeAction action) {
    switch (action) {
        case EscapeAction::LogOff:
        case EscapeAction::LogOn:
        case EscapeAction::SizeScreen:
        case EscapeAction::NewScreen:
        case EscapeAction::CloseScreen:
        case EscapeAction::SetFunctionKey:
            return Target::Plugin;
        case EscapeAction::SaveCursor:
        case EscapeAction::RestoreCursor:
        case EscapeAction::ScrollDown:
        case EscapeAction::ScrollUp:
        case EscapeAction::SetTab:
        case EscapeAction::ClearTab:
        case EscapeAction::ClearAllTabs:
        case EscapeAction::PrintScreen:
        case EscapeAction::PrintLine:
        case EscapeAction::SetKey:
            return Target::Nothing;
        default:
            return Target::Window;
    }
}

/// Runs an operation with the cursor mark off the window. An operation that fails leaves the mark off.
template <class Operation>
void bracketed(frmTerm& window, Operation operation) {
    window.DataReceiveStart();
    operation(window.screen());
    window.DataReceiveEnd();
}

/// The remote side writes line breaks as one of two characters that it can send.
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
    const char Ch = static_cast<char>(code);
    screen.term_setattr({&Ch, 1});
}

}  // namespace

std::int16_t clsTerminal::IClientEscTree_EscTreeCount() const {
    return kEscapeRows;
}

std::string clsTerminal::IClientEscTree_EscTreeString(std::int16_t Index) const {
    return escapeRow(Index).pattern;
}

std::string clsTerminal::IClientEscTree_EscTreeDesc(std::int16_t Index) const {
    return escapeRow(Index).description;
}

void clsTerminal::IClientEscTree_EscTreeProcess(std::int16_t Index, const EscapeArguments& args) {
    const EscapeAction action = escapeRow(Index).action;
    switch (targetOf(action)) {
        case Target::Nothing:
            return;
        case Target::Plugin:
            return processClassAction(action, args);
        case Target::Window:
            // A window that the user has closed drops what reaches it.
            if (currentWindow().isLoaded()) processWindowAction(action, args);
    }
}

void clsTerminal::processClassAction(EscapeAction action, const EscapeArguments& args) {
    switch (action) {
        case EscapeAction::LogOff:
            return SetLogon(false);
        case EscapeAction::LogOn:
            return SetLogon(true);
        case EscapeAction::SizeScreen:
            return sizeScreen(args);
        case EscapeAction::NewScreen:
            return newScreen();
        case EscapeAction::CloseScreen:
            return closeScreen();
        case EscapeAction::SetFunctionKey:
            return SetFunctionKey(args.at(1), args.at(2), false);
        default:
            return;
    }
}

void clsTerminal::processWindowAction(EscapeAction action, const EscapeArguments& args) {
    frmTerm& window = currentWindow();
    switch (action) {
        case EscapeAction::Home:
            return bracketed(window, [](Screen& screen) { screen.SetCursor(0, 0); });
        case EscapeAction::CursorPosition:
        case EscapeAction::ForceCursorPosition:
            return bracketed(window, [&](Screen& screen) {
                const std::int16_t row = toInt16(args.at(1));
                const std::int16_t column = toInt16(args.at(2));
                screen.SetCursor(narrowToInt16(column - 1), narrowToInt16(row - 1));
            });
        // The cursor moves by one cell whatever count the sequence carries.
        case EscapeAction::CursorUp:
            return bracketed(window, [](Screen& screen) { screen.CursorY(screen.CursorY() - 1); });
        case EscapeAction::CursorDown:
            return bracketed(window, [](Screen& screen) { screen.CursorY(screen.CursorY() + 1); });
        case EscapeAction::CursorForward:
            return bracketed(window, [](Screen& screen) { screen.CursorX(screen.CursorX() + 1); });
        case EscapeAction::CursorBack:
            return bracketed(window, [](Screen& screen) { screen.CursorX(screen.CursorX() - 1); });
        case EscapeAction::ClearEndOfLine:
            return bracketed(window, [](Screen& screen) { screen.ClearEndOfLine(); });
        case EscapeAction::ClearStartOfLine:
            return bracketed(window, [](Screen& screen) { screen.ClearStartOfLine(); });
        case EscapeAction::ClearLine:
            return bracketed(window, [](Screen& screen) { screen.ClearLine(); });
        case EscapeAction::ClearEndOfScreen:
            return bracketed(window, [](Screen& screen) { screen.ClearEndOfScreen(); });
        case EscapeAction::ClearBeginOfScreen:
            return bracketed(window, [](Screen& screen) { screen.ClearBeginOfScreen(); });
        case EscapeAction::ClearScreen:
            return bracketed(window, [](Screen& screen) { screen.ClearScreen(); });
        case EscapeAction::SetAttribute:
            return bracketed(window, [&](Screen& screen) { setAttributes(screen, args); });
        case EscapeAction::ShowHelpBox:
            return showHelpBox(window, args);
        case EscapeAction::HideHelpBox:
            return window.HideHelpBox(toInt16(args.at(1)));
        case EscapeAction::AddKnowledgeBase:
            return window.AddKB(std::string(args.at(1)), std::string(args.at(2)));
        case EscapeAction::ClearKnowledgeBase:
            return window.ClearKB();
        case EscapeAction::AddRemote:
            return window.AddRemote(std::string(args.at(1)), std::string(args.at(2)));
        case EscapeAction::ClearRemote:
            return window.ClearRemote();
        default:
            return;
    }
}

void clsTerminal::setAttributes(Screen& screen, const EscapeArguments& args) {
    // Joining the fields that are not empty with ";" and splitting the whole gives the parts of each in turn.
    for (std::string_view field : args.all()) {
        if (field.empty()) continue;
        for (;;) {
            const auto end = field.find(';');
            setRendition(screen, field.substr(0, end));
            if (end == std::string_view::npos) break;
            field.remove_prefix(end + 1);
        }
    }
}

void clsTerminal::sizeScreen(const EscapeArguments& args) {
    const std::int16_t width = toInt16(args.at(1));
    const std::int16_t height = toInt16(args.at(2));
    rememberedWidth_ = width;
    rememberedHeight_ = height;
    currentWindow().screen().ScreenSize(width, rememberedHeight_);
}

void clsTerminal::newScreen() {
    const std::shared_ptr<frmTerm> below = currentWindow().shared_from_this();
    below->TurnOnOffCursor(false);
    below->DataReceiveEnd();
    NewTerminalWindow();
    const std::shared_ptr<frmTerm> window = currentWindow().shared_from_this();
    window->setWindowState(below->PrevWindowState());
    window->screen().ScreenSize(rememberedWidth_, rememberedHeight_);
    window->DisplayTerminalWindows();
    window->TerminalOpen();
    window->Logon(loggedOn_);
    window->MakeActive();
    window->setFocus();
}

void clsTerminal::closeScreen() {
    if (topIndex_ <= 0) return;
    const int top = topIndex_;
    makeCurrent(nullptr);
    unloadSlot(static_cast<std::size_t>(top));
    // Whoever heard of the closing may have ended everything.
    if (topIndex_ != top) return;
    topIndex_ = top - 1;
    const std::shared_ptr<frmTerm> window = windows_[static_cast<std::size_t>(topIndex_)];
    makeCurrent(window);
    if (!window) return;
    window->MakeActive();
    window->TurnOnOffCursor(true);
    window->setFocus();
}

void clsTerminal::showHelpBox(frmTerm& window, const EscapeArguments& args) {
    const std::string text = withLineBreaks(args.at(6));
    const std::int16_t box = toInt16(args.at(1));
    const std::int16_t top = toInt16(args.at(2));
    const std::int16_t left = toInt16(args.at(3));
    const std::int16_t width = toInt16(args.at(4));
    const std::int16_t height = toInt16(args.at(5));
    window.ShowHelpBox(box, top, left, width, height, text);
}

}  // namespace kavrelon
