#include "terminal/MenuItems.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "support/AsciiText.h"
#include "terminal/FontFace.h"
#include "terminal/FontMenu.h"
#include "terminal/HostMenus.h"
#include "terminal/PrinterType.h"
#include "terminal/Printers.h"
#include "terminal/TermWindow.h"

namespace kavrelon {
namespace {

/// How many printers are listed: what their commands have room for.
constexpr std::size_t kMostPrinters = 500;

/// The printing methods that the settings file can name.
constexpr std::array<KeyedCaption, kSpoolTypes.size()> kPrinterTypes{
    {{"Default", 'D'}, {"Enhanced Metafile", 'E'}, {"Text", 'T'}, {"Raw", 'R'}}};

constexpr const char* kNotInstalled = "not installed";

/// The number of a command in a group that begins at `first`.
std::optional<std::int16_t> numberIn(MenuCommand command, MenuCommand first, std::size_t count) {
    if (command < first || command >= first + count) return std::nullopt;
    return static_cast<std::int16_t>(static_cast<int>(command) - static_cast<int>(first));
}

std::optional<std::int16_t> fontEntry(MenuCommand command) {
    const auto entry = numberIn(command, MenuCommand::mnuFontStyle, kFirstFontEntry + kFontEntries);
    return entry >= kFirstFontEntry ? entry : std::nullopt;
}

std::vector<MenuItem> fontItems() {
    std::vector<MenuItem> items;
    for (int entry = kFirstFontEntry; entry < kFirstFontEntry + kFontEntries; ++entry) {
        const FontMenuEntry& font = fontMenuEntry(entry);
        items.push_back(
            {MenuCommand::mnuFontStyle + static_cast<std::size_t>(entry), font.caption, font.accessKey});
    }
    return items;
}

std::vector<MenuItem> printerTypeItems() {
    std::vector<MenuItem> items;
    items.reserve(kPrinterTypes.size() + 1);
    for (const KeyedCaption& caption : kPrinterTypes) {
        items.push_back({MenuCommand::mnuPrinterType + items.size(), caption.text, caption.accessKey});
    }
    items.emplace_back();
    return items;
}

std::vector<MenuItem> printerItems(const PrinterMenu& printers) {
    if (printers.entries().empty())
        return {{.command = MenuCommand::mnuPrinter, .caption = "No printers", .enabled = false}};
    std::vector<MenuItem> items;
    for (const PrinterMenu::Entry& entry : printers.entries()) {
        if (items.size() == kMostPrinters) break;
        items.push_back({.command = MenuCommand::mnuPrinter + items.size(),
                         .caption = entry.caption,
                         .checked = entry.checked});
    }
    return items;
}

std::vector<MenuItem> hostItems(MenuCommand first, HostMenus::Items from) {
    std::vector<MenuItem> items;
    items.reserve(from.shown.size() + 1);
    for (HostMenus::Item& item : from.shown) {
        items.push_back(
            {.command = first + items.size(), .caption = std::move(item.caption), .enabled = item.enabled});
    }
    if (from.more > 0) {
        items.push_back({.command = MenuCommand::moreItems,
                         .caption = std::to_string(from.more) + " more",
                         .enabled = false});
    }
    return items;
}

}  // namespace

std::vector<MenuItem> lastingItems(BarMenu menu) {
    switch (menu) {
        case BarMenu::mnuFile:
            return {{MenuCommand::mnuFileRest, "Reset", 'R'},
                    mnuFileScreenWidth(kWideCaption),
                    {MenuCommand::mnuFileCRtoCRLF, "CR sends CR LF", 's'},
                    {MenuCommand::mnuFileClearClipboard, "Clear Clipboard", 'C'},
                    {MenuCommand::mnuFilePrint, "Print Screen", 'P'},
                    {},
                    {MenuCommand::mnuFileExit, "Exit", 'x'}};
        case BarMenu::mnuFont:
            return fontItems();
        case BarMenu::mnuPrinter:
            return printerTypeItems();
        case BarMenu::mnuKnowledgeBase:
        case BarMenu::mnuRemote:
            break;
    }
    return {};
}

std::vector<MenuItem> passingItems(BarMenu menu, TermWindowEvents& events) {
    switch (menu) {
        case BarMenu::mnuPrinter:
            return printerItems(events.printerMenu());
        case BarMenu::mnuKnowledgeBase:
            return hostItems(MenuCommand::mnKnowledgeBaseLink, events.hostMenus().mnKnowledgeBaseLink());
        case BarMenu::mnuRemote:
            return hostItems(MenuCommand::mnuRemoteConnection, events.hostMenus().mnuRemoteConnection());
        case BarMenu::mnuFile:
        case BarMenu::mnuFont:
            break;
    }
    return {};
}

std::vector<MenuItem> mnuRightClick(bool copyEnabled, bool pasteEnabled) {
    return {{MenuCommand::mnuRightClickCopy, "Copy", 'C', "", copyEnabled},
            {MenuCommand::mnuRightClickPaste, "Paste", 'P', "", pasteEnabled},
            {MenuCommand::mnuRightClickClear, "Clear", 'l'}};
}

std::vector<MenuItem> mnuFontStyle(InstalledFaces& faces) {
    std::vector<MenuItem> items = fontItems();
    for (std::size_t entry = 0; entry < items.size(); ++entry) {
        if (!faces.has(kFontMenu[entry].font.name)) items[entry].note = kNotInstalled;
    }
    return items;
}

MenuItem mnuFileScreenWidth(std::string_view caption) {
    // Both captions have the letter, so that the key stays the same.
    return {MenuCommand::mnuFileScreenWidth, std::string(caption), 'L'};
}

std::string menuText(const MenuItem& item) {
    const auto marked = item.accessKey == '\0' ? std::string::npos : item.caption.find(item.accessKey);
    std::string text;
    for (std::size_t place = 0; place < item.caption.size(); ++place) {
        const char ch = item.caption[place];
        if (ch == '&' || place == marked) text += '&';
        // A tab would set apart what follows, and a null character end the text.
        text += isControl(ch) ? ' ' : ch;
    }
    return *item.note == '\0' ? text : text + '\t' + item.note;
}

bool redrawsScreen(MenuCommand command) {
    return command == MenuCommand::mnuFileScreenWidth || fontEntry(command);
}

void choose(MenuCommand command, TermWindowEvents& events) noexcept {
    switch (command) {
        case MenuCommand::mnuFileRest:
            return events.mnuFileRest_Click();
        case MenuCommand::mnuFileScreenWidth:
            return events.mnuFileScreenWidth_Click();
        case MenuCommand::mnuFileCRtoCRLF:
            return events.mnuFileCRtoCRLF_Click();
        case MenuCommand::mnuFileClearClipboard:
            return events.mnuFileClearClipboard_Click();
        case MenuCommand::mnuFilePrint:
            return events.mnuFilePrint_Click();
        case MenuCommand::mnuFileExit:
            return events.mnuFileExit_Click();
        case MenuCommand::mnuRightClickCopy:
            return events.mnuRightClickCopy_Click();
        case MenuCommand::mnuRightClickPaste:
            return events.mnuRightClickPaste_Click();
        case MenuCommand::mnuRightClickClear:
            return events.mnuRightClickClear_Click();
        case MenuCommand::Separator:
        case MenuCommand::moreItems:
        case MenuCommand::mnuFontStyle:
        case MenuCommand::mnuPrinterType:
        case MenuCommand::mnuPrinter:
        case MenuCommand::mnKnowledgeBaseLink:
        case MenuCommand::mnuRemoteConnection:
            break;
    }
    if (const auto entry = fontEntry(command)) {
        events.mnuFontStyle_Click(*entry);
    } else if (const auto type = numberIn(command, MenuCommand::mnuPrinterType, kPrinterTypes.size())) {
        events.mnuPrinterType_Click(*type);
    } else if (const auto printer = numberIn(command, MenuCommand::mnuPrinter, kMostPrinters)) {
        events.mnuPrinter_Click(*printer);
    } else if (const auto link = numberIn(command, MenuCommand::mnKnowledgeBaseLink, HostMenus::kMostShown)) {
        events.mnKnowledgeBaseLink_Click(*link);
    } else if (const auto program =
                   numberIn(command, MenuCommand::mnuRemoteConnection, HostMenus::kMostShown)) {
        events.mnuRemoteConnection_Click(*program);
    }
}

}  // namespace kavrelon
