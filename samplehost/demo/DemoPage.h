#pragma once

#include <chrono>
#include <string_view>

#include "samplehost/demo/TerminalWriter.h"

namespace kavrelon {

/// What the terminal's keys send.
namespace demokey {
inline constexpr char kLeft = 21;
inline constexpr char kRight = 6;
inline constexpr char kUp = 26;
inline constexpr char kDown = 10;
inline constexpr char kEnter = 13;
inline constexpr char kEscape = 27;
inline constexpr char kBackspace = 8;
inline constexpr char kDelete = 4;
inline constexpr char kHome = 1;
inline constexpr char kEnd = 5;
}  // namespace demokey

/// The screen size that pages are made for; a larger screen shows them in its middle.
inline constexpr int kPageColumns = 80;
inline constexpr int kPageRows = 25;

/// The keys that the session handles on every page, for the foot of the page.
inline constexpr std::string_view kPageKeys = "Left, Right: other pages    Esc: menu";

/// The screen that a page is drawn on.
struct DemoScreen {
    TerminalWriter& out;
    /// Size of the user's screen in cells.
    int columns = kPageColumns;
    int rows = kPageRows;
};

/// One page of the demo session. The session draws the title in rows 0 to 2 and key hints in rows 23 and 24,
/// unless the page wants the whole screen.
class DemoPage {
  public:
    virtual ~DemoPage() = default;

    virtual std::string_view title() const = 0;
    /// One line for the menu, at most 70 characters.
    virtual std::string_view summary() const = 0;
    /// The page's own keys, for the foot of the page; at most 36 characters.
    virtual std::string_view keys() const { return {}; }
    virtual bool wantsWholeScreen() const { return false; }
    /// How long the page is shown while nobody presses a key.
    virtual std::chrono::milliseconds watchTime() const { return std::chrono::seconds(8); }

    /// Draws the page from its beginning on an erased screen. `unattended`: nobody has pressed a key so far,
    /// and the page should act by itself.
    virtual void start(const DemoScreen& screen, bool unattended) = 0;
    virtual void advance(const DemoScreen&, std::chrono::milliseconds) {}
    /// Returns whether the key was one of the page's own.
    virtual bool key(const DemoScreen&, char) { return false; }
    /// Restores whatever the page has changed other than the screen's text.
    virtual void leave(const DemoScreen&) {}
};

}  // namespace kavrelon
