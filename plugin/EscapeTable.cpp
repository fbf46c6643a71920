#include "plugin/EscapeTable.h"

namespace kavrelon {
namespace {

// Hosts show the descriptions and build their recognisers from the patterns: every character of them is
// fixed, uneven spelling included.
constexpr EscapeTable makeTable() {
    EscapeTable table;
    table.AddEscEntry("<ESC>[H", "Home", ScreenAction::Home);
    table.AddEscEntry("<27>[{N};{N}H", "@(,)", ScreenAction::CursorPosition);
    table.AddEscEntry("<27>[{N}A", "CursorUp", ScreenAction::CursorUp);
    table.AddEscEntry("<27>[A", "CursorUp", ScreenAction::CursorUp);
    table.AddEscEntry("<27>[{N}B", "CursorDown", ScreenAction::CursorDown);
    table.AddEscEntry("<27>[B", "CursorDown", ScreenAction::CursorDown);
    table.AddEscEntry("<27>[{N}C", "CursorForward", ScreenAction::CursorForward);
    table.AddEscEntry("<27>[C", "CursorForward", ScreenAction::CursorForward);
    table.AddEscEntry("<27>[{N}D", "CursorBack", ScreenAction::CursorBack);
    table.AddEscEntry("<27>[D", "CursorBack", ScreenAction::CursorBack);
    table.AddEscEntry("<ESC>[{N};{N}f", "ForceCursorPosition", ScreenAction::ForceCursorPosition);
    table.AddEscEntry("<ESC>[s", "SaveCursor", IgnoredAction::SaveCursor);
    table.AddEscEntry("<ESC>[u", "RestoreCursor", IgnoredAction::RestoreCursor);
    table.AddEscEntry("<ESC>D", "ScrollDown", IgnoredAction::ScrollDown);
    table.AddEscEntry("<ESC>M", "ScrollUp", IgnoredAction::ScrollUp);
    table.AddEscEntry("<ESC>H", "SetTab", IgnoredAction::SetTab);
    table.AddEscEntry("<ESC>[g", "ClearTab", IgnoredAction::ClearTab);
    table.AddEscEntry("<ESC>[3g", "ClearAllTabs", IgnoredAction::ClearAllTabs);
    table.AddEscEntry("<ESC>[K", "Clear EOL", ScreenAction::ClearEndOfLine);
    table.AddEscEntry("<ESC>[0K", "Clear EOL", ScreenAction::ClearEndOfLine);
    table.AddEscEntry("<ESC>[1K", "Clear SOL", ScreenAction::ClearStartOfLine);
    table.AddEscEntry("<ESC>[2K", "Clear whole line", ScreenAction::ClearLine);
    table.AddEscEntry("<ESC>[J", "Clear EOS", EraseAction::ClearEndOfScreen);
    table.AddEscEntry("<ESC>[0J", "Clear EOS", EraseAction::ClearEndOfScreen);
    table.AddEscEntry("<ESC>[1J", "Clear SOS", ScreenAction::ClearBeginOfScreen);
    table.AddEscEntry("<ESC>[2J", "Clear Screen", EraseAction::ClearScreen);
    table.AddEscEntry("<ESC>[i", "Print Screen", IgnoredAction::PrintScreen);
    table.AddEscEntry("<ESC>[1i", "Print Line", IgnoredAction::PrintLine);
    table.AddEscEntry("<ESC>[{N};<34>{X}<34>p", "Set Key", IgnoredAction::SetKey);
    table.AddEscEntry("<ESC>[{N}m", "Set Attribute", ScreenAction::SetAttribute);
    table.AddEscEntry("<ESC>[{N};{X}m", "Set Attribute", ScreenAction::SetAttribute);
    table.AddEscEntry("<27><8>L0<term>", "LogOff", PluginAction::LogOff);
    table.AddEscEntry("<27><8>L1<term>", "LogOn", PluginAction::LogOn);
    table.AddEscEntry("<27><8>L1 {X}<term>", "LogOn", PluginAction::LogOn);
    table.AddEscEntry("<27><8>SIZE {N},{N}<term>", "Size Screen", PluginAction::SizeScreen);
    table.AddEscEntry("<27><8>NS<TERM>", "NewScreen", PluginAction::NewScreen);
    table.AddEscEntry("<27><8>CS<TERM>", "CloseScreen", PluginAction::CloseScreen);
    table.AddEscEntry("<27><8>FKEY {x};{x}<TERM>", "SetFunction Key", PluginAction::SetFunctionKey);
    table.AddEscEntry("<31>HELPBOX {n} {n},{n},{n},{n} {x}<31>", "Display Help box",
                      WindowAction::ShowHelpBox);
    table.AddEscEntry("<31>HELPBOX {n} HIDE<31>", "Hide Help box", WindowAction::HideHelpBox);
    table.AddEscEntry("<31>KB {X},{X}<31>", "KB Add", WindowAction::AddKB);
    table.AddEscEntry("<31>KB Clear<31>", "KB Clear", WindowAction::ClearKB);
    table.AddEscEntry("<31>REMOTE [{X}] \"{X}\"<31>", "Remote Add", WindowAction::AddRemote);
    table.AddEscEntry("<31>REMOTE CLEAR<31>", "remote Clear", WindowAction::ClearRemote);
    return table;
}

constexpr EscapeTable kTable = makeTable();

}  // namespace

const EscapeTable& escapeTable() {
    return kTable;
}

}  // namespace kavrelon
