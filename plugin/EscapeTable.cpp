#include "plugin/EscapeTable.h"

#include "support/RuntimeError.h"

namespace kavrelon {
namespace {

using enum EscapeAction;

// Hosts show these texts and build their recognisers from the patterns: every character of them is fixed,
// uneven spelling included.
constexpr std::array<EscapeRow, kEscapeRows> kRows{{
    {"<ESC>[H", "Home", Home},
    {"<27>[{N};{N}H", "@(,)", CursorPosition},
    {"<27>[{N}A", "CursorUp", CursorUp},
    {"<27>[A", "CursorUp", CursorUp},
    {"<27>[{N}B", "CursorDown", CursorDown},
    {"<27>[B", "CursorDown", CursorDown},
    {"<27>[{N}C", "CursorForward", CursorForward},
    {"<27>[C", "CursorForward", CursorForward},
    {"<27>[{N}D", "CursorBack", CursorBack},
    {"<27>[D", "CursorBack", CursorBack},
    {"<ESC>[{N};{N}f", "ForceCursorPosition", ForceCursorPosition},
    {"<ESC>[s", "SaveCursor", SaveCursor},
    {"<ESC>[u", "RestoreCursor", RestoreCursor},
    {"<ESC>D", "ScrollDown", ScrollDown},
    {"<ESC>M", "ScrollUp", ScrollUp},
    {"<ESC>H", "SetTab", SetTab},
    {"<ESC>[g", "ClearTab", ClearTab},
    {"<ESC>[3g", "ClearAllTabs", ClearAllTabs},
    {"<ESC>[K", "Clear EOL", ClearEndOfLine},
    {"<ESC>[0K", "Clear EOL", ClearEndOfLine},
    {"<ESC>[1K", "Clear SOL", ClearStartOfLine},
    {"<ESC>[2K", "Clear whole line", ClearLine},
    {"<ESC>[J", "Clear EOS", ClearEndOfScreen},
    {"<ESC>[0J", "Clear EOS", ClearEndOfScreen},
    {"<ESC>[1J", "Clear SOS", ClearBeginOfScreen},
    {"<ESC>[2J", "Clear Screen", ClearScreen},
    {"<ESC>[i", "Print Screen", PrintScreen},
    {"<ESC>[1i", "Print Line", PrintLine},
    {"<ESC>[{N};<34>{X}<34>p", "Set Key", SetKey},
    {"<ESC>[{N}m", "Set Attribute", SetAttribute},
    {"<ESC>[{N};{X}m", "Set Attribute", SetAttribute},
    {"<27><8>L0<term>", "LogOff", LogOff},
    {"<27><8>L1<term>", "LogOn", LogOn},
    {"<27><8>L1 {X}<term>", "LogOn", LogOn},
    {"<27><8>SIZE {N},{N}<term>", "Size Screen", SizeScreen},
    {"<27><8>NS<TERM>", "NewScreen", NewScreen},
    {"<27><8>CS<TERM>", "CloseScreen", CloseScreen},
    {"<27><8>FKEY {x};{x}<TERM>", "SetFunction Key", SetFunctionKey},
    {"<31>HELPBOX {n} {n},{n},{n},{n} {x}<31>", "Display Help box", ShowHelpBox},
    {"<31>HELPBOX {n} HIDE<31>", "Hide Help box", HideHelpBox},
    {"<31>KB {X},{X}<31>", "KB Add", AddKnowledgeBase},
    {"<31>KB Clear<31>", "KB Clear", ClearKnowledgeBase},
    {"<31>REMOTE [{X}] \"{X}\"<31>", "Remote Add", AddRemote},
    {"<31>REMOTE CLEAR<31>", "remote Clear", ClearRemote},
}};

constexpr EscapeRow kEmptyRow;

}  // namespace

const EscapeRow& escapeRow(std::int16_t index) {
    if (index < 0 || index > kEscapeUpperBound) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    if (index < 1 || index > kEscapeRows) return kEmptyRow;
    return kRows[static_cast<std::size_t>(index - 1)];
}

}  // namespace kavrelon
