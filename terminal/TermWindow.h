#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "helpbox/HelpWindow.h"
#include "support/Geometry.h"
#include "terminal/screen/TermSurface.h"

namespace kavrelon {

struct KeyStroke;

/// The states of a window, with their public numbers.
enum class WindowState : std::int16_t { Normal = 0, Minimised = 1, Maximised = 2 };

enum class TermTimer { cursor_timer, tmrBeep };

/// Their intervals.
inline constexpr std::array<int, 2> kTimerMilliseconds{300, 10};

/// What a window lets the user hear: the remote side's bell, and that the clipboard could not be used.
enum class Tone { Bell, Complaint };

struct ToneSound {
    int frequencyHertz;
    int milliseconds;
};
inline constexpr std::array<ToneSound, 2> kToneSounds{{{900, 250}, {100, 100}}};

/// What a terminal window declares for its title bar.
struct TitleBarSettings {
    bool controlBox = true;
    bool maximiseBox = true;
    bool minimiseBox = true;
    bool hasCaption = true;
};

/// The platform's terminal window: its surface, and what the session needs of it besides drawing.
///
/// A window is created hidden. Most of the calls that do not draw send messages, in which the host may do
/// anything: close this window too, but not destroy the object, which its owner keeps as long as somebody is
/// inside. A window that is closed ignores calls and gives empty answers.
class TermWindow : public TermSurface {
  public:
    /// Takes the window off the desktop for good. May be called more than once, also in one of its events.
    virtual void close() noexcept = 0;
    virtual WindowId id() const = 0;
    /// Where the inner area begins, in pixels from the corner of the whole window.
    virtual Point innerCorner() const = 0;
    /// The face that text is drawn in: the one chosen, or what stands in for it where it is missing.
    virtual std::string fontName() const = 0;
    /// Shows the window, modeless, in the state last set.
    virtual void show() = 0;
    virtual WindowState state() const = 0;
    /// Sets the state; a hidden window takes it when it is shown. Ends in a resize event when the size
    /// changes.
    virtual void setState(WindowState state) = 0;
    /// Brings the window to the front of the stacking order and makes it the active window.
    virtual void makeActive() = 0;
    /// Gives the window the keyboard focus.
    virtual void setFocus() = 0;

    /// Tells screen readers, magnifiers and input methods where the cursor's cell is, while the window has
    /// the focus. Draws nothing.
    virtual void placeCaret(const Rect& cell) = 0;

    /// The text of the title bar.
    virtual std::string caption() const = 0;
    virtual void setCaption(const std::string& text) = 0;
    virtual TitleBarSettings titleBarSettings() const = 0;
    /// The window style bits, as the platform keeps them.
    virtual std::uint32_t styleBits() const = 0;
    /// Stores the style bits and has the frame redrawn at the same place, size and stacking position.
    virtual void setStyleBits(std::uint32_t bits) = 0;

    /// Starts or stops a timer. Starting one that runs does nothing.
    virtual void enableTimer(TermTimer timer, bool on) = 0;
    /// Sounds a tone without making the caller wait for its end. Each has its own limit of how often.
    virtual void beep(Tone tone) = 0;

    /// With `bytes`, those that a terminal put on the clipboard, where there are some; else its text in the
    /// ANSI code page; nothing when it holds none or cannot be opened.
    virtual std::optional<std::string> clipboardText(bool bytes) = 0;
    /// Replaces the clipboard's content by bytes of the screen; false when another program does not let go of
    /// it.
    virtual bool setClipboardText(const std::string& text) = 0;
    virtual bool clearClipboard() = 0;
    /// Pops up the context menu at the mouse. The choice arrives as an event, before or after this returns.
    virtual void showContextMenu(bool copyEnabled, bool pasteEnabled) = 0;

    /// Puts the font menu's check mark on this entry alone; an entry that does not exist takes all marks off.
    virtual void checkFontEntry(int index) = 0;
    /// Likewise for the printer-type menu (entries 0 to 3).
    virtual void checkPrinterTypeEntry(int index) = 0;
    /// Puts a check mark on the File menu's entry for carriage returns, or takes it off.
    virtual void checkCRtoCRLF(bool on) = 0;
    /// Sets the caption of the File menu's screen-width entry.
    virtual void setScreenWidthCaption(std::string_view caption) = 0;
    /// The "Remote" menu can be opened, or not. What the host-filled menus hold is asked for when they open.
    virtual void enableRemoteMenu(bool enabled) = 0;
    /// Tells the user that something did not work, in a message box that belongs to the window, which may be
    /// gone when this returns.
    virtual void reportFailure(const std::string& text) = 0;
    /// Asks the user a question with the answers yes and no, in a message box that belongs to the window; no
    /// is the default, and the answer when nobody can be asked. Other events arrive meanwhile: when it
    /// returns, the window may be gone.
    virtual bool confirm(const std::string& text) = 0;
};

enum class MouseButton : std::uint8_t { Left = 1, Right = 2 };

class HostMenus;
class PrinterMenu;

/// What a terminal window tells the terminal: the platform's events, each under the name of its handler.
/// A handler may close the window. None throws.
class TermWindowEvents {
  public:
    virtual ~TermWindowEvents() = default;

    /// The platform wants the window's content, grid and surroundings, in the area that is due.
    virtual void Form_Paint() noexcept = 0;
    /// The inner area or the state has changed.
    virtual void Form_Resize() noexcept = 0;
    /// The user is sizing the window: the least that its inner area may become.
    virtual Size leastInnerSize() noexcept = 0;
    /// The window has moved on the desktop, or it was shown, hidden, minimised or restored.
    virtual void Form_Move() noexcept = 0;
    virtual void Form_Activate() noexcept = 0;
    virtual void Form_Deactivate() noexcept = 0;
    /// Somebody (the user, the system, the Exit entry) wants the window closed. It is gone afterwards.
    virtual void Form_Close() noexcept = 0;

    /// A key went down. When the handler sets its code to 0, nothing else is to come of the key: no
    /// character, no menu, no default action.
    virtual void Form_KeyDown(KeyStroke& key) noexcept = 0;
    /// A character was typed, in the ANSI code page.
    virtual void Form_KeyPress(std::int16_t KeyAscii) noexcept = 0;
    virtual void Form_KeyUp(std::int16_t keyCode) noexcept = 0;
    virtual void Form_GotFocus() noexcept = 0;
    virtual void Form_LostFocus() noexcept = 0;
    virtual void Form_MouseDown(MouseButton button, Point mouse) noexcept = 0;
    /// The mouse has moved; positions outside the window arrive as long as the left button is held.
    virtual void Form_MouseMove(bool leftHeld, Point mouse) noexcept = 0;
    virtual void Form_MouseUp(MouseButton button, Point mouse) noexcept = 0;

    virtual void cursor_timer_Timer() noexcept = 0;
    virtual void tmrBeep_Timer() noexcept = 0;

    virtual void mnuFileRest_Click() noexcept = 0;
    virtual void mnuFileScreenWidth_Click() noexcept = 0;
    virtual void mnuFileCRtoCRLF_Click() noexcept = 0;
    virtual void mnuFileClearClipboard_Click() noexcept = 0;
    virtual void mnuFileExit_Click() noexcept = 0;
    virtual void mnuFontStyle_Click(std::int16_t index) noexcept = 0;
    virtual void mnuPrinterType_Click(std::int16_t index) noexcept = 0;
    virtual void mnuRightClickCopy_Click() noexcept = 0;
    virtual void mnuRightClickPaste_Click() noexcept = 0;
    virtual void mnuRightClickClear_Click() noexcept = 0;
    /// Item `index` of a host-filled menu was chosen.
    virtual void mnKnowledgeBaseLink_Click(std::int16_t index) noexcept = 0;
    virtual void mnuRemoteConnection_Click(std::int16_t index) noexcept = 0;
    virtual void mnuFilePrint_Click() noexcept = 0;
    /// Entry `index` of the printer menu, as `printerMenu` lists them.
    virtual void mnuPrinter_Click(std::int16_t index) noexcept = 0;

    /// What the menus show that are filled when they open. Listing printers throws when memory runs out.
    virtual const HostMenus& hostMenus() const noexcept = 0;
    virtual PrinterMenu printerMenu() = 0;
};

class ProfileFile;
class Launcher;
class Picture;
class Printers;

/// Where windows and settings come from: the platform, or memory. Windows that are closed late keep
/// a platform alive that is owned by a shared pointer; any other must outlive them.
class TermPlatform : public HelpPlatform, public std::enable_shared_from_this<TermPlatform> {
  public:
    /// Creates a hidden window whose events go to `events` for as long as that object lives.
    /// The caller owns the window. Throws when the platform has none to give.
    virtual std::unique_ptr<TermWindow> createWindow(std::weak_ptr<TermWindowEvents> events) = 0;
    virtual ProfileFile& profileFile() = 0;
    virtual Launcher& launcher() = 0;
    virtual Printers& printers() = 0;
    /// The picture of a file, for the windows of this platform to draw; null when it holds none.
    virtual std::shared_ptr<const Picture> loadPicture(const std::string& path) = 0;
    /// Lets pending window messages through. Any event may arrive meanwhile, and the host may call in.
    virtual void processMessages() = 0;
};

}  // namespace kavrelon
