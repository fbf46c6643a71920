#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <variant>

#include "support/RuntimeError.h"

namespace kavrelon {

// What recognised sequences do, by what they act on: a row's target is the type of its action. The numbers
// are the system's action codes; hosts never see them.

/// Changes the current window's screen, with the cursor mark off meanwhile.
enum class ScreenAction : std::int16_t {
    Home = 0,
    CursorPosition = 1,
    CursorUp = 2,
    CursorDown = 3,
    CursorForward = 4,
    CursorBack = 5,
    ForceCursorPosition = 6,
    ClearEndOfLine = 14,
    ClearStartOfLine = 15,
    ClearLine = 16,
    ClearBeginOfScreen = 18,
    SetAttribute = 25,
};

/// Changes the screen and closes help boxes, which sends messages: the host may end everything in them.
enum class EraseAction : std::int16_t {
    ClearEndOfScreen = 17,
    ClearScreen = 19,
};

/// Needs the current window, and leaves its screen alone.
enum class WindowAction : std::int16_t {
    ShowHelpBox = 107,
    HideHelpBox = 108,
    AddKB = 109,
    ClearKB = 110,
    AddRemote = 111,
    ClearRemote = 112,
};

/// Concerns the plug-in and its stack of windows.
enum class PluginAction : std::int16_t {
    LogOff = 100,
    LogOn = 101,
    SizeScreen = 102,
    NewScreen = 104,
    CloseScreen = 105,
    SetFunctionKey = 106,
};

/// Does nothing: the sequence is recognised so that it does not litter the screen.
enum class IgnoredAction : std::int16_t {
    SaveCursor = 7,
    RestoreCursor = 8,
    ScrollDown = 9,
    ScrollUp = 10,
    SetTab = 11,
    ClearTab = 12,
    ClearAllTabs = 13,
    PrintScreen = 20,
    PrintLine = 21,
    SetKey = 24,
};

using EscapeAction = std::variant<ScreenAction, EraseAction, WindowAction, PluginAction, IgnoredAction>;

/// One row of the table: what the host looks for, what it may call it, and what the plug-in then does.
///
/// Pattern notation: `<ESC>` and `<n>` are one character, `{N}` `{n}` is a numeric field, `{X}` `{x}` a text
/// field, `<term>` `<TERM>` the end of a private sequence; anything else is itself.
struct EscapeRow {
    const char* pattern = "";
    const char* description = "";
    EscapeAction action = ScreenAction::Home;
};

/// The table from which the host builds its escape tree, with indices 0 to 100. Rows are counted from 1; row
/// 0 and those after the last are empty and carry action code 0.
class EscapeTable {
  public:
    static constexpr std::int16_t kUpperBound = 100;

    /// Appends a row: its index is the new count. Raises SubscriptOutOfRange past index 100.
    constexpr void AddEscEntry(const char* pattern, const char* description, EscapeAction action) {
        if (count_ == kUpperBound) raise(RuntimeErrorNumber::SubscriptOutOfRange);
        rows_[static_cast<std::size_t>(++count_)] = {pattern, description, action};
    }
    /// The number of rows, and the index of the last one.
    constexpr std::int16_t EscTreeCount() const { return count_; }
    /// Raises SubscriptOutOfRange outside 0 to 100.
    constexpr const EscapeRow& row(std::int16_t index) const {
        if (index < 0 || index > kUpperBound) raise(RuntimeErrorNumber::SubscriptOutOfRange);
        return rows_[static_cast<std::size_t>(index)];
    }

  private:
    std::array<EscapeRow, kUpperBound + 1> rows_{};
    std::int16_t count_ = 0;
};

/// The plug-in's table, the same for all its objects.
const EscapeTable& escapeTable();

}  // namespace kavrelon
