#include "samplehost/win32/HelpMenu.h"

namespace kavrelon {
namespace {

// The property of a window that holds its HelpMenu. The common controls have the same to offer, and would
// have to be loaded at every start.
constexpr const wchar_t* kProperty = L"samplehost.HelpMenu";

void removePopup(HMENU bar, HMENU popup) {
    for (int at = GetMenuItemCount(bar) - 1; at >= 0; --at) {
        if (GetSubMenu(bar, at) == popup) DeleteMenu(bar, static_cast<UINT>(at), MF_BYPOSITION);
    }
}

}  // namespace

HelpMenu::~HelpMenu() {
    for (const auto& [window, added] : windows_) {
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(added.plugIns));
        RemovePropW(window, kProperty);
        removePopup(GetMenu(window), added.popup);
        DrawMenuBar(window);
    }
}

void HelpMenu::addTo(HWND window) {
    HMENU const bar = window == nullptr ? nullptr : GetMenu(window);
    if (bar == nullptr || windows_.contains(window) || !SetPropW(window, kProperty, this)) return;
    Added& added = windows_[window];
    added.popup = CreatePopupMenu();
    AppendMenuW(added.popup, MF_STRING, kAbout, L"&About...");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(added.popup), L"&Help");
    added.plugIns = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
    DrawMenuBar(window);
}

LRESULT CALLBACK HelpMenu::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = static_cast<HelpMenu*>(GetPropW(window, kProperty));
    const WNDPROC plugIns = self->windows_.at(window).plugIns;
    if (message == WM_COMMAND && lParam == 0 && LOWORD(wParam) == kAbout) {
        self->chosen_();
        return 0;
    }
    if (message == WM_NCDESTROY) {
        RemovePropW(window, kProperty);
        self->windows_.erase(window);
    }
    return CallWindowProcW(plugIns, window, message, wParam, lParam);
}

}  // namespace kavrelon
