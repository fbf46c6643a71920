#pragma once

#include <chrono>
#include <string_view>

#include "samplehost/demo/TerminalWriter.h"

namespace kavrelon {

/// What the keys of the terminal send.
namespace demokey {
inline constexpr char kLeft = 21;
inline constexpr char kRight = 6;
inline constexpr char kUp = 26;
inline constexpr char kDown = 10;
inline constexpr char kEnter = 13;
inline constexpr char kEscape = 27;
inline constexpr char kBackspace = 8;
inline constexpr char kDelete = 4;
}  // namespace demokey

/// The screen that pages are laid out for; larger ones show them in the middle.
inline constexpr int kPageColumns = 80;
inline constexpr int kPageRows = 25;

/// The keys that every page leaves to the session, for the foot of the page.
inline constexpr std::string_view kPageKeys = "Left, Right: other pages    Esc: menu";

/// What a page is drawn on.
struct DemoScreen {
    TerminalWriter& out;
    /// Size of the user's screen in cells.
    int columns = kPageColumns;
    int rows = kPageRows;
};

/// One page of the demo session. The session draws title and key hints around it, in rows 0 to 2 and 23 to
/// 24, unless the page wants the whole screen.
class DemoPage {
  public:
    virtual ~DemoPage() = default;

    virtual std::string_view title() const = 0;
    /// One line for the menu, at most 70 characters.
    virtual std::string_view summary() const = 0;
    /// What the page's own keys do, for the foot of the page; at most 36 characters.
    virtual std::string_view keys() const { return {}; }
    virtual bool wantsWholeScreen() const { return false; }
    /// How long the page is worth watching when nobody is at the keyboard.
    virtual std::chrono::milliseconds watchTime() const { return std::chrono::seconds(8); }

    /// Draws the page from scratch on the erased screen. `unattended`: nobody has pressed a key so far, and
    /// the page may show by itself what it can do.
    virtual void start(const DemoScreen& screen, bool unattended) = 0;
    virtual void advance(const DemoScreen&, std::chrono::milliseconds) {}
    /// Returns whether the key was one of the page's own.
    virtual bool key(const DemoScreen&, char) { return false; }
    /// Puts back whatever the page has changed beside the screen's text.
    virtual void leave(const DemoScreen&) {}
};

}  // namespace kavrelon
