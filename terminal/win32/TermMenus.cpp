#include "terminal/win32/TermMenus.h"

#include <array>
#include <cstdint>
#include <string>

#include "terminal/FontMenu.h"
#include "terminal/TermWindow.h"

namespace kavrelon {
namespace {

enum Command : WORD {
    kFileReset = 100,
    kFileScreenWidth,
    kFileClearClipboard,
    kFileExit,
    kFont = 200,         // + entry, 1 to 8
    kPrinterType = 300,  // + entry, 0 to 3
};

bool isFont(WORD command) {
    return command >= kFont + kFirstFontEntry && command < kFont + kFirstFontEntry + kFontEntries;
}

/// The letters that choose the font entries from the keyboard, entry 1 first.
constexpr std::string_view kFontMnemonics = "MLTAuNHD";
static_assert(kFontMnemonics.size() == kFontEntries);

/// How a print job's data is handed to the spooler.
constexpr std::array<const char*, 4> kPrinterTypes{"&Default", "&Enhanced Metafile", "&Text", "&Raw"};

std::string withMnemonic(std::string caption, char letter) {
    const auto place = caption.find(letter);
    return place == std::string::npos ? caption : caption.insert(place, 1, '&');
}

void append(HMENU menu, WORD command, const char* caption) {
    AppendMenuA(menu, MF_STRING, command, caption);
}

void appendPopup(HMENU bar, Menu popup, const char* caption) {
    if (AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup.get()), caption)) popup.release();
}

Menu fileMenu() {
    Menu menu(CreatePopupMenu());
    append(menu.get(), kFileReset, "&Reset");
    append(menu.get(), kFileScreenWidth, "132 Char per Line");
    append(menu.get(), kFileClearClipboard, "&Clear Clipboard");
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
    return menu;
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

}  // namespace

TermMenus::TermMenus() : owned_(CreateMenu()), bar_(owned_.get()) {
    appendPopup(bar_, fileMenu(), "&File");
    appendPopup(bar_, fontMenu(), "F&ont");
    appendPopup(bar_, printerMenu(), "&Printer");
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
        case kFileExit:
            return events.mnuFileExit_Click();
        default:
            break;
    }
    if (isFont(command)) {
        events.mnuFontStyle_Click(static_cast<std::int16_t>(command - kFont));
    } else if (command >= kPrinterType && command < kPrinterType + kPrinterTypes.size()) {
        events.mnuPrinterType_Click(static_cast<std::int16_t>(command - kPrinterType));
    }
}

}  // namespace kavrelon
