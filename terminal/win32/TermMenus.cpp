#include "terminal/win32/TermMenus.h"

#include <algorithm>
#include <string>

#include "support/win32/WideText.h"
#include "terminal/FontMenu.h"
#include "terminal/PrinterType.h"

namespace kavrelon {
namespace {

void append(HMENU menu, const std::vector<MenuItem>& items) {
    for (const MenuItem& item : items) {
        if (item.command == MenuCommand::Separator) {
            AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
        } else {
            const UINT state =
                (item.enabled ? MF_ENABLED : MF_GRAYED) | (item.checked ? MF_CHECKED : MF_UNCHECKED);
            AppendMenuW(menu, MF_STRING | state, static_cast<UINT_PTR>(item.command),
                        toShownWide(menuText(item)).c_str());
        }
    }
}

/// Returns the popup, which is the bar's from now on.
HMENU appendPopup(HMENU bar, const std::vector<MenuItem>& items, const KeyedCaption& caption) {
    Menu popup(CreatePopupMenu());
    HMENU menu = popup.get();
    append(menu, items);
    const MenuItem item{.caption = caption.text, .accessKey = caption.accessKey};
    if (AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), menuText(item).c_str()))
        static_cast<void>(popup.release());
    return menu;
}

/// Gives an item of the menu another text; its state and its mark stay.
void rename(HMENU menu, const MenuItem& item) {
    std::wstring text = toShownWide(menuText(item));
    MENUITEMINFOW change{};
    change.cbSize = sizeof change;
    change.fMask = MIIM_STRING;
    change.dwTypeData = text.data();
    SetMenuItemInfoW(menu, static_cast<UINT>(item.command), FALSE, &change);
}

/// Removes the items from a position on, the last one first: nothing has to move up then.
void removeFrom(HMENU menu, int position) {
    for (int last = GetMenuItemCount(menu) - 1; last >= position; --last) {
        DeleteMenu(menu, static_cast<UINT>(last), MF_BYPOSITION);
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
    for (std::size_t menu = 0; menu < popups_.size(); ++menu) {
        popups_[menu] = appendPopup(bar_, lastingItems(static_cast<BarMenu>(menu)), kBarCaptions[menu]);
    }
    enableRemote(false);
}

void TermMenus::checkFontEntry(int index) const {
    const auto group = static_cast<int>(MenuCommand::mnuFontStyle);
    checkOnly(bar_, group + kFirstFontEntry, kFontEntries, group + index);
}

void TermMenus::checkPrinterTypeEntry(int index) const {
    const auto group = static_cast<int>(MenuCommand::mnuPrinterType);
    checkOnly(bar_, group, static_cast<int>(kSpoolTypes.size()), group + index);
}

void TermMenus::checkCRtoCRLF(bool on) const {
    CheckMenuItem(bar_, static_cast<UINT>(MenuCommand::mnuFileCRtoCRLF),
                  MF_BYCOMMAND | (on ? MF_CHECKED : MF_UNCHECKED));
}

void TermMenus::setScreenWidthCaption(std::string_view caption) const {
    rename(bar_, mnuFileScreenWidth(caption));
}

bool TermMenus::enableRemote(bool enabled) const {
    const UINT state = enabled ? MF_ENABLED : MF_GRAYED;
    const BOOL before = EnableMenuItem(bar_, static_cast<UINT>(BarMenu::mnuRemote), MF_BYPOSITION | state);
    return before != -1 && static_cast<UINT>(before) != state;
}

void TermMenus::fill(HMENU popup, TermWindowEvents& events, InstalledFaces& faces) const {
    const auto found = std::ranges::find(popups_, popup);
    if (found == popups_.end()) return;
    const auto menu = static_cast<BarMenu>(found - popups_.begin());
    if (menu == BarMenu::mnuFont) {
        for (const MenuItem& item : mnuFontStyle(faces)) rename(popup, item);
    }
    const std::vector<MenuItem> items = passingItems(menu, events);
    removeFrom(popup, static_cast<int>(lastingItems(menu).size()));
    append(popup, items);
}

void TermMenus::popUp(HWND window, bool copyEnabled, bool pasteEnabled) {
    const Menu menu(CreatePopupMenu());
    append(menu.get(), mnuRightClick(copyEnabled, pasteEnabled));
    const POINT place = menuPlace(window);
    TrackPopupMenu(menu.get(), TPM_RIGHTBUTTON, static_cast<int>(place.x), static_cast<int>(place.y), 0,
                   window, nullptr);
}

}  // namespace kavrelon
