#pragma once

#include <array>
#include <cstdint>

namespace kavrelon {

/// What a recognised sequence does. Numbers that are missing, and every number not named here, do nothing.
enum class EscapeAction : std::int16_t {
    Home = 0,
    CursorPosition = 1,
    CursorUp = 2,
    CursorDown = 3,
    CursorForward = 4,
    CursorBack = 5,
    ForceCursorPosition = 6,
    SaveCursor = 7,
    RestoreCursor = 8,
    ScrollDown = 9,
    ScrollUp = 10,
    SetTab = 11,
    ClearTab = 12,
    ClearAllTabs = 13,
    ClearEndOfLine = 14,
    ClearStartOfLine = 15,
    ClearLine = 16,
    ClearEndOfScreen = 17,
    ClearBeginOfScreen = 18,
    ClearScreen = 19,
    PrintScreen = 20,
    PrintLine = 21,
    SetKey = 24,
    SetAttribute = 25,
    LogOff = 100,
    LogOn = 101,
    SizeScreen = 102,
    NewScreen = 104,
    CloseScreen = 105,
    SetFunctionKey = 106,
    ShowHelpBox = 107,
    HideHelpBox = 108,
    AddKnowledgeBase = 109,
    ClearKnowledgeBase = 110,
    AddRemote = 111,
    ClearRemote = 112,
};

/// One row of the table from which the host builds its escape tree.
///
/// Pattern notation: `<ESC>` and `<n>` stand for one character, `{N}` `{n}` for a numeric field, `{X}` `{x}`
/// for a text field, `<term>` `<TERM>` for the end of a private sequence; anything else stands for itself.
struct EscapeRow {
    const char* pattern = "";
    const char* description = "";
    EscapeAction action = EscapeAction::Home;
};

inline constexpr std::int16_t kEscapeRows = 44;
inline constexpr std::int16_t kEscapeUpperBound = 100;

/// The row at `index`. Rows 1 to 44 are in use; row 0 and those behind them are empty and carry action 0.
/// Raises SubscriptOutOfRange outside 0 to 100.
const EscapeRow& escapeRow(std::int16_t index);

}  // namespace kavrelon
