#include "terminal/win32/TermMenus.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "terminal/FontMenu.h"
#include "terminal/HostMenus.h"
#include "terminal/Printers.h"
#include "terminal/TermWindow.h"

namespace kavrelon {
namespace {

enum Command : WORD {
    kFileReset = 100,
    kFileScreenWidth,
    kFileClearClipboard,
    kFilePrint,
    kFileExit,
    kCopy = 150,
    kPaste,
    kClear,
    kFont = 200,            // + entry, 1 to 8
    kPrinterType = 300,     // + entry, 0 to 3
    kPrinterName = 400,     // + entry
    kKnowledgeBase = 1000,  // + item
    kRemote = 20000,        // + item
};

/// How many items a host-filled menu and the list of printers show: what their command numbers have room for.
constexpr std::size_t kMostItems = 16000;
constexpr std::size_t kMostPrinters = 500;

bool isFont(WORD command) {
    return command >= kFont + kFirstFontEntry && command < kFont + kFirstFontEntry + kFontEntries;
}

/// The letters that choose the font entries from the keyboard, entry 1 first.
constexpr std::string_view kFontMnemonics = "MLTAuNHD";
static_assert(kFontMnemonics.size() == kFontEntries);

/// The printing methods that the settings file can name.
constexpr std::array<const char*, 4> kPrinterTypes{"&Default", "&Enhanced Metafile", "&Text", "&Raw"};

std::string withMnemonic(std::string caption, char letter) {
    const auto place = caption.find(letter);
    return place == std::string::npos ? caption : caption.insert(place, 1, '&');
}

/// A text as a caption that shows just that: "&" would mark a letter to choose the entry by.
std::string literalCaption(std::string text) {
    for (auto place = text.find('&'); place != std::string::npos; place = text.find('&', place + 2)) {
        text.insert(place, 1, '&');
    }
    return text;
}

void append(HMENU menu, WORD command, const char* caption, bool enabled = true) {
    AppendMenuA(menu, MF_STRING | (enabled ? MF_ENABLED : MF_GRAYED), command, caption);
}

/// Returns the popup, which is the bar's from now on.
HMENU appendPopup(HMENU bar, Menu popup, const char* caption) {
    HMENU menu = popup.get();
    if (AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), caption))
        static_cast<void>(popup.release());
    return menu;
}

/// Removes the items from a position on, the last one first: nothing has to move up then.
void removeFrom(HMENU menu, int position) {
    for (int last = GetMenuItemCount(menu) - 1; last >= position; --last) {
        DeleteMenu(menu, static_cast<UINT>(last), MF_BYPOSITION);
    }
}

/// Whether a command stands for an item of a group that begins at `first`; leaves the item's number.
bool isItem(WORD command, WORD first, std::size_t count, std::int16_t& item) {
    if (command < first || command >= first + count) return false;
    item = static_cast<std::int16_t>(command - first);
    return true;
}

Menu fileMenu() {
    Menu menu(CreatePopupMenu());
    append(menu.get(), kFileReset, "&Reset");
    append(menu.get(), kFileScreenWidth, "132 Char per Line");
    append(menu.get(), kFileClearClipboard, "&Clear Clipboard");
    append(menu.get(), kFilePrint, "&Print Screen");
    AppendMenuA(menu.get(), MF_SEPARATOR, 0, nullptr);
    append(menu.get(), kFileExit, "E&xit");
    return menu;
}

Menu fontMenu() {
    Menu menu(CreatePopupMenu());
    for (int entry = kFirstFontEntry; entry < kFirstFontEntry + kFontEntries; ++entry) {
        const char letter = kFontMnemonics[static_cast<std::size_t>(entry - kFirstFontEntry)];
        append(menu.get(), static_cast<WORD>(kFont + entry),
               withMnemonic(fontMenuEntry(entry).caption, letter).c_str());
    }
    return menu;
}

Menu printerMenu() {
    Menu menu(CreatePopupMenu());
    WORD command = kPrinterType;
    for (const char* caption : kPrinterTypes) append(menu.get(), command++, caption);
    AppendMenuA(menu.get(), MF_SEPARATOR, 0, nullptr);
    return menu;
}

/// Rebuilds a menu from the items that the host has filled in.
void fillItems(HMENU menu, WORD first, const std::vector<HostMenus::Item>& items) {
    removeFrom(menu, 0);
    const std::size_t count = std::min(items.size(), kMostItems);
    for (std::size_t item = 0; item < count; ++item) {
        append(menu, static_cast<WORD>(first + item), items[item].caption.c_str(), items[item].enabled);
    }
}

/// Rebuilds the list of printers behind the printer types and their separator.
void fillPrinters(HMENU menu, const PrinterMenu& printers) {
    removeFrom(menu, static_cast<int>(kPrinterTypes.size()) + 1);
    if (printers.entries().empty()) append(menu, kPrinterName, "No printers", false);
    const std::size_t count = std::min(printers.entries().size(), kMostPrinters);
    for (std::size_t i = 0; i < count; ++i) {
        const PrinterMenu::Entry& entry = printers.entries()[i];
        append(menu, static_cast<WORD>(kPrinterName + i), literalCaption(entry.caption).c_str());
        if (entry.checked) {
            CheckMenuItem(menu, static_cast<UINT>(kPrinterName + i), MF_BYCOMMAND | MF_CHECKED);
        }
    }
}

/// Gives one entry of a group the round mark of a choice, or none.
void checkOnly(HMENU bar, int first, int count, int checked) {
    if (checked >= first && checked < first + count) {
        CheckMenuRadioItem(bar, static_cast<UINT>(first), static_cast<UINT>(first + count - 1),
                           static_cast<UINT>(checked), MF_BYCOMMAND);
        return;
    }
    for (int entry = first; entry < first + count; ++entry) {
        CheckMenuItem(bar, static_cast<UINT>(entry), MF_BYCOMMAND | MF_UNCHECKED);
    }
}

/// Where the mouse is on the screen, or the window's corner when it is elsewhere.
POINT menuPlace(HWND window) {
    RECT inner{};
    GetClientRect(window, &inner);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inner), 2);
    POINT mouse{};
    GetCursorPos(&mouse);
    return PtInRect(&inner, mouse) ? mouse : POINT{inner.left, inner.top};
}

}  // namespace

TermMenus::TermMenus() : owned_(CreateMenu()), bar_(owned_.get()) {
    appendPopup(bar_, fileMenu(), "&File");
    appendPopup(bar_, fontMenu(), "F&ont");
    printer_ = appendPopup(bar_, printerMenu(), "&Printer");
    knowledgeBase_ = appendPopup(bar_, Menu(CreatePopupMenu()), "&Knowledge Base");
    remote_ = appendPopup(bar_, Menu(CreatePopupMenu()), "&Remote");
    enableRemote(false);
}

void TermMenus::checkFontEntry(int index) const {
    checkOnly(bar_, kFont + kFirstFontEntry, kFontEntries, kFont + index);
}

void TermMenus::checkPrinterTypeEntry(int index) const {
    checkOnly(bar_, kPrinterType, static_cast<int>(kPrinterTypes.size()), kPrinterType + index);
}

void TermMenus::setScreenWidthCaption(std::string_view caption) const {
    ModifyMenuA(bar_, kFileScreenWidth, MF_BYCOMMAND | MF_STRING, kFileScreenWidth,
                std::string(caption).c_str());
}

bool TermMenus::enableRemote(bool enabled) const {
    constexpr UINT kRemotePosition = 4;
    const UINT state = enabled ? MF_ENABLED : MF_GRAYED;
    const BOOL before = EnableMenuItem(bar_, kRemotePosition, MF_BYPOSITION | state);
    return before != -1 && static_cast<UINT>(before) != state;
}

void TermMenus::fill(HMENU popup, TermWindowEvents& events) const {
    if (popup == printer_) {
        fillPrinters(popup, events.printerMenu());
    } else if (popup == knowledgeBase_) {
        fillItems(popup, kKnowledgeBase, events.hostMenus().mnKnowledgeBaseLink());
    } else if (popup == remote_) {
        fillItems(popup, kRemote, events.hostMenus().mnuRemoteConnection());
    }
}

void TermMenus::popUp(HWND window, bool copyEnabled, bool pasteEnabled) {
    const Menu menu(CreatePopupMenu());
    append(menu.get(), kCopy, "&Copy", copyEnabled);
    append(menu.get(), kPaste, "&Paste", pasteEnabled);
    append(menu.get(), kClear, "C&lear");
    const POINT place = menuPlace(window);
    TrackPopupMenu(menu.get(), TPM_RIGHTBUTTON, static_cast<int>(place.x), static_cast<int>(place.y), 0,
                   window, nullptr);
}

bool TermMenus::redraws(WORD command) {
    return command == kFileScreenWidth || isFont(command);
}

void TermMenus::click(WORD command, TermWindowEvents& events) noexcept {
    switch (command) {
        case kFileReset:
            return events.mnuFileRest_Click();
        case kFileScreenWidth:
            return events.mnuFileScreenWidth_Click();
        case kFileClearClipboard:
            return events.mnuFileClearClipboard_Click();
        case kFilePrint:
            return events.mnuFilePrint_Click();
        case kFileExit:
            return events.mnuFileExit_Click();
        case kCopy:
            return events.mnuRightClickCopy_Click();
        case kPaste:
            return events.mnuRightClickPaste_Click();
        case kClear:
            return events.mnuRightClickClear_Click();
        default:
            break;
    }
    std::int16_t item = 0;
    if (isFont(command)) {
        events.mnuFontStyle_Click(static_cast<std::int16_t>(command - kFont));
    } else if (isItem(command, kPrinterType, kPrinterTypes.size(), item)) {
        events.mnuPrinterType_Click(item);
    } else if (isItem(command, kPrinterName, kMostPrinters, item)) {
        events.mnuPrinter_Click(item);
    } else if (isItem(command, kKnowledgeBase, kMostItems, item)) {
        events.mnKnowledgeBaseLink_Click(item);
    } else if (isItem(command, kRemote, kMostItems, item)) {
        events.mnuRemoteConnection_Click(item);
    }
}

}  // namespace kavrelon
