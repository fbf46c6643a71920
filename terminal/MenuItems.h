#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace kavrelon {

class TermWindowEvents;

/// The menus of the window's bar, in its order.
enum class BarMenu : std::uint8_t { mnuFile, mnuFont, mnuPrinter, mnuKnowledgeBase, mnuRemote };

/// Their captions. In all captions "&" marks the letter that chooses the item, and "&&" is shown as "&". What
/// the host fills in is shown as it is.
inline constexpr std::array<const char*, 5> kBarCaptions{"&File", "F&ont", "&Printer", "&Knowledge Base",
                                                         "&Remote"};

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
    bool enabled = true;
    bool checked = false;
};

/// What a menu of the bar holds from the start, in order.
std::vector<MenuItem> lastingItems(BarMenu menu);
/// The items after those, made anew each time the menu opens. Throws what the events throw.
std::vector<MenuItem> passingItems(BarMenu menu, TermWindowEvents& events);
/// The context menu.
std::vector<MenuItem> mnuRightClick(bool copyEnabled, bool pasteEnabled);

/// Whether a command changes the whole picture.
bool redrawsScreen(MenuCommand command);
/// Calls the handler of a command, if there is one.
void choose(MenuCommand command, TermWindowEvents& events) noexcept;

}  // namespace kavrelon
