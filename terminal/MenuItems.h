#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavrelon {

class InstalledFaces;
class TermWindowEvents;

/// A caption, and which of its letters chooses the item while its menu is open. The letter is marked where
/// the caption has it first.
struct KeyedCaption {
    const char* text;
    char accessKey;
};

/// The menus of the window's bar, in its order.
enum class BarMenu : std::uint8_t { mnuFile, mnuFont, mnuPrinter, mnuKnowledgeBase, mnuRemote };

/// Their captions.
inline constexpr std::array<KeyedCaption, 5> kBarCaptions{
    {{"File", 'F'}, {"Font", 'o'}, {"Printer", 'P'}, {"Knowledge Base", 'K'}, {"Remote", 'R'}}};

/// The File menu's entry for the screen's width names the width that it would set.
inline constexpr const char* kWideCaption = "132 Char per Line";
inline constexpr const char* kNarrowCaption = "80 Char per Line";

/// What an item tells when it is chosen. The commands of a group count on from its first: the font menu's
/// from 1, all others from 0.
enum class MenuCommand : std::uint16_t {
    Separator = 0,
    mnuFileRest = 100,
    mnuFileScreenWidth,
    mnuFileCRtoCRLF,
    mnuFileClearClipboard,
    mnuFilePrint,
    mnuFileExit,
    mnuRightClickCopy = 150,
    mnuRightClickPaste,
    mnuRightClickClear,
    mnuFontStyle = 200,
    mnuPrinterType = 300,
    mnuPrinter = 400,
    /// Says how many items a menu does not show.
    moreItems = 950,
    mnKnowledgeBaseLink = 1000,
    mnuRemoteConnection = 20000,
};

/// The command of a group's item or entry.
constexpr MenuCommand operator+(MenuCommand first, std::size_t item) {
    return static_cast<MenuCommand>(static_cast<std::size_t>(first) + item);
}

/// One line of a menu.
struct MenuItem {
    MenuCommand command = MenuCommand::Separator;
    std::string caption;
    /// See `KeyedCaption`; none for what the host or the system fills in.
    char accessKey = '\0';
    /// Shown apart from the caption, at the right.
    const char* note = "";
    bool enabled = true;
    bool checked = false;
};

/// What a menu of the bar holds from the start, in order.
std::vector<MenuItem> lastingItems(BarMenu menu);
/// Those of the font menu, with a note on each font that the system does not have at the time.
std::vector<MenuItem> mnuFontStyle(InstalledFaces& faces);
/// The File menu's entry for the screen's width.
MenuItem mnuFileScreenWidth(std::string_view caption);
/// The items after those, made anew each time the menu opens. Throws what the events throw.
std::vector<MenuItem> passingItems(BarMenu menu, TermWindowEvents& events);
/// The context menu.
std::vector<MenuItem> mnuRightClick(bool copyEnabled, bool pasteEnabled);

/// An item's text as menus of the platform want it: "&" before the letter that chooses it, and "&&" for each
/// "&" of the caption, which shows as it is otherwise; then, behind a tab, the note.
std::string menuText(const MenuItem& item);

/// Whether a command changes the whole picture.
bool redrawsScreen(MenuCommand command);
/// Calls the handler of a command, if there is one.
void choose(MenuCommand command, TermWindowEvents& events) noexcept;

}  // namespace kavrelon
