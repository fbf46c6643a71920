#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <utility>

namespace kavrelon {

/// The host's own menu "Help" at the end of the bar of each terminal window, with the entry "About".
///
/// The bar and its window belong to the plug-in. What the user chooses in any of its menus is sent to the
/// window, so this object reads the window's messages before the plug-in does, and keeps those of its own
/// entry: the plug-in would take them for an entry that it does not have. Both go with the window.
class HelpMenu {
  public:
    /// Commands that a host can have for its own: what is below is the plug-in's, what is above the system's.
    static constexpr UINT kFirstFreeCommand = 40000;
    static constexpr UINT kLastFreeCommand = 0xEFFF;
    static constexpr UINT kAbout = kFirstFreeCommand;

    /// `chosen` is called when the user has chosen the entry, from within a message of the window: it must
    /// not throw, nor do anything that may destroy the window.
    explicit HelpMenu(std::function<void()> chosen) : chosen_(std::move(chosen)) {}
    ~HelpMenu();
    HelpMenu(const HelpMenu&) = delete;
    HelpMenu& operator=(const HelpMenu&) = delete;

    /// Gives the window the menu, unless it has it or has no bar. Null is no window.
    void addTo(HWND window);

  private:
    struct Added {
        HMENU popup = nullptr;
        WNDPROC plugIns = nullptr;
    };

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::function<void()> chosen_;
    std::map<HWND, Added> windows_;
};

}  // namespace kavrelon
