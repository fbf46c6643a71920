#include "samplehost/win32/HelpMenu.h"

#include <commctrl.h>

namespace kavrelon {
namespace {

constexpr UINT_PTR kSubclass = 1;

void removePopup(HMENU bar, HMENU popup) {
    for (int at = GetMenuItemCount(bar) - 1; at >= 0; --at) {
        if (GetSubMenu(bar, at) == popup) DeleteMenu(bar, static_cast<UINT>(at), MF_BYPOSITION);
    }
}

}  // namespace

HelpMenu::~HelpMenu() {
    for (const auto& [window, popup] : popups_) {
        RemoveWindowSubclass(window, procedure, kSubclass);
        removePopup(GetMenu(window), popup);
        DrawMenuBar(window);
    }
}

void HelpMenu::addTo(HWND window) {
    HMENU const bar = window == nullptr ? nullptr : GetMenu(window);
    if (bar == nullptr || popups_.contains(window)) return;
    HMENU const popup = CreatePopupMenu();
    AppendMenuW(popup, MF_STRING, kAbout, L"&About...");
    if (!AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), L"&Help")) {
        DestroyMenu(popup);
        return;
    }
    popups_[window] = popup;
    SetWindowSubclass(window, procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    DrawMenuBar(window);
}

LRESULT CALLBACK HelpMenu::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                     DWORD_PTR menu) {
    auto* const self = reinterpret_cast<HelpMenu*>(menu);
    if (message == WM_COMMAND && lParam == 0 && LOWORD(wParam) == kAbout) {
        self->chosen_();
        return 0;
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, procedure, kSubclass);
        self->popups_.erase(window);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace kavrelon
