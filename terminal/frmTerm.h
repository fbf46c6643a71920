#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "terminal/HelpBoxes.h"
#include "terminal/HostMenus.h"
#include "terminal/Keyboard.h"
#include "terminal/MenuItems.h"
#include "terminal/PictureFolder.h"
#include "terminal/Printers.h"
#include "terminal/TermOwner.h"
#include "terminal/TermWindow.h"
#include "terminal/screen/Screen.h"
#include "terminal/screen/Selection.h"

namespace kavrelon {

/// The terminal window: a thin face over its parts (the screen, the settings, the session) that carries every
/// member the plug-in class and the platform's window call.
///
/// After the window has been closed, by anybody, the object remains and ignores what it is told. Much of what
/// it does sends messages, in which the host may close this window and everything else: callers keep the
/// object alive while they are inside, and each step looks whether the window is still there.
class frmTerm final : public TermWindowEvents,
                      public std::enable_shared_from_this<frmTerm>,
                      private HelpBoxOwner,
                      private ScreenObserver,
                      private KeyTarget {
  public:
    /// Creates the form and loads it: the platform's window exists, hidden, and the screen is set up.
    static std::shared_ptr<frmTerm> load(TermPlatform& platform);
    ~frmTerm() override;
    frmTerm(const frmTerm&) = delete;
    frmTerm& operator=(const frmTerm&) = delete;

    // Session
    /// Stores the way out to the host; null releases it. Not owned: released by `Unload`.
    void SetCallback(TermOwner* oValue) { callback_ = oValue; }
    void TerminalOpen();
    void TerminalClose() noexcept;
    /// Date and time of the last `TerminalClose`; the clock's epoch before the first.
    std::chrono::system_clock::time_point CloseDate() const { return CloseDate_; }
    void Logon(bool bLogin);
    void ShowTitleBar(bool bState);
    /// The text of the title bar.
    std::string Caption() const { return isLoaded() ? window_->caption() : std::string(); }
    void Caption(const std::string& value);
    /// The platform's number of the window; 0 after it was closed.
    WindowId hWnd() const { return isLoaded() ? window_->id() : WindowId{}; }
    void MakeActive();
    /// Applies the settings file, erases the screen and shows the window.
    void DisplayTerminalWindows();
    void setFocus();
    void setWindowState(WindowState state);
    WindowState PrevWindowState() const { return PrevWindowState_; }
    /// Closes the window for good, telling the plug-in class first. Doing it twice is harmless.
    void Unload() noexcept;
    bool isLoaded() const { return loaded_; }
    /// On its way out or gone: no longer a window that the user has.
    bool isClosing() const { return !loaded_ || closing_; }

    bool PasteOk() const { return PasteOk_; }
    void PasteOk(bool value) { PasteOk_ = value; }
    bool CutOk() const { return CutOk_; }
    void CutOk(bool value) { CutOk_ = value; }
    /// A paste takes the bytes that a terminal copied, where they are on the clipboard; off, the text that
    /// other programs see, in the ANSI code page.
    bool PasteBytes() const { return PasteBytes_; }
    void PasteBytes(bool value) { PasteBytes_ = value; }
    bool CRtoCRLF() const { return keyboard_.CRtoCRLF(); }
    /// Marks the menu entry as well.
    void CRtoCRLF(bool value);
    bool InputOn() const { return keyboard_.InputOn(); }
    void InputOn(bool value) { keyboard_.InputOn(value); }
    bool TermActive() const { return TermActive_; }
    bool sessionOpen() const { return sessionOpen_; }
    bool sessionClosed() const { return sessionClosed_; }
    const std::string& ConnectionProfile() const { return ConnectionProfile_; }
    void ConnectionProfile(std::string value) { ConnectionProfile_ = std::move(value); }
    const std::string& IniFile() const { return IniFile_; }
    void IniFile(std::string value) { IniFile_ = std::move(value); }

    // Screen
    /// Writes one byte at the cursor: most are printed, some are control characters.
    void WriteTerm(std::uint8_t Ch) { screen_.WriteTerm(Ch); }
    void DataReceive(std::uint8_t sData) { WriteTerm(sData); }
    void DataReceiveStart() { screen_.DataReceiveStart(); }
    void DataReceiveEnd() { screen_.DataReceiveEnd(); }
    void EraseScreen() { screen_.ClearScreen(); }
    void Redrawscreen(bool PaintOnly = false) { screen_.Redrawscreen(PaintOnly); }
    /// What a copy would have; empty while nothing is selected.
    std::string SelectionText() const;
    void TurnOnOffCursor(bool OnOff);
    bool cursorBlinks() const { return cursorBlinks_; }
    /// Tells the platform where the cursor is, for those who follow it. Due where a block of received data
    /// ends; the blink does it too, for whatever else moves the cursor.
    void placeCaret() {
        if (isLoaded()) window_->placeCaret(screen_.cursorBlock());
    }
    void ReadINIFile() noexcept;
    /// Carries out a text command: "IMAGE", "IMAGECLEAR", "PASTEOK" or "CUTOK", in any case. Numbers of an
    /// "IMAGE" that cannot be read count as 0; an "IMAGECLEAR" without a number clears nothing. Sets
    /// `bProcessed` for the picture commands, and leaves it alone for all others.
    void ProcessCmd(std::string_view sCmd, bool& bProcessed) noexcept;

    /// The character screen, for its cursor, erase, attribute, size and painting members.
    Screen& screen() { return screen_; }
    const Screen& screen() const { return screen_; }

    // Help boxes and host-filled menus
    /// Shows a text over a block of cells, in place of the box that has this number. Lines are divided by
    /// CR LF or "^". Raises SubscriptOutOfRange for a number outside 0 to 50.
    void ShowHelpBox(std::int16_t Index, std::int16_t Top, std::int16_t Left, std::int16_t Width,
                     std::int16_t Height, std::string_view Text);
    void HideHelpBox(std::int16_t Index);
    const kavrelon::HelpBoxes& HelpBoxes() const { return HelpBoxes_; }
    /// Shows a picture of the picture folder over the cells between two corners (X: columns, Y: rows, both
    /// from 1) in any order, above the text. It takes the place of an older one of its number, even when
    /// there is none of this name: the older one would be taken for it.
    void DisplayPicture(std::int16_t PicNum, std::int16_t TopX, std::int16_t TopY, std::int16_t BotX,
                        std::int16_t BotY, std::string_view PicName);
    void ClearPicture(std::int16_t PicNum) { screen_.ClearPicture(PicNum); }
    /// The picture of a name that the remote side gave; null when it is refused or there is none.
    std::shared_ptr<const Picture> loadPicture(std::string_view name) {
        return pictureFolder_.load(IniFile_, name);
    }
    void AddKB(std::string_view sURL, std::string_view sDesc) { menus_.AddKB(sURL, sDesc); }
    void ClearKB() { menus_.ClearKB(); }
    void AddRemote(std::string_view CommandLine, std::string_view Desc);
    void ClearRemote();

    // Events of the platform's window
    void Form_Paint() noexcept override;
    void Form_Resize() noexcept override;
    Size leastInnerSize() noexcept override;
    void Form_Move() noexcept override;
    void Form_Activate() noexcept override;
    void Form_Deactivate() noexcept override;
    void Form_Close() noexcept override;
    void Form_KeyDown(KeyStroke& key) noexcept override;
    void Form_KeyPress(std::int16_t KeyAscii) noexcept override;
    void Form_KeyUp(std::int16_t keyCode) noexcept override;
    void Form_GotFocus() noexcept override { placeCaret(); }
    void Form_LostFocus() noexcept override;
    void Form_MouseDown(MouseButton button, Point mouse) noexcept override;
    void Form_MouseMove(bool leftHeld, Point mouse) noexcept override;
    void Form_MouseUp(MouseButton button, Point mouse) noexcept override;
    void cursor_timer_Timer() noexcept override;
    void tmrBeep_Timer() noexcept override;
    void mnuFileRest_Click() noexcept override;
    void mnuFileScreenWidth_Click() noexcept override;
    void mnuFileCRtoCRLF_Click() noexcept override;
    void mnuFileClearClipboard_Click() noexcept override;
    void mnuFileExit_Click() noexcept override;
    void mnuFontStyle_Click(std::int16_t index) noexcept override;
    void mnuPrinterType_Click(std::int16_t index) noexcept override;
    void mnuRightClickCopy_Click() noexcept override;
    void mnuRightClickPaste_Click() noexcept override;
    void mnuRightClickClear_Click() noexcept override;
    void mnKnowledgeBaseLink_Click(std::int16_t index) noexcept override;
    void mnuRemoteConnection_Click(std::int16_t index) noexcept override;
    void mnuFilePrint_Click() noexcept override;
    void mnuPrinter_Click(std::int16_t index) noexcept override;
    const HostMenus& hostMenus() const noexcept override { return menus_; }
    PrinterMenu printerMenu() override;

  private:
    explicit frmTerm(TermPlatform& platform);
    void Form_Load();

    // What keys act on.
    std::string functionKeyText(std::int16_t keyNumber) override;
    void sendBreak() override;
    void sendText(const std::string& text) override;
    bool copySelection() override;
    std::string textToPaste() override;

    // What the screen tells.
    void screenErased() noexcept override { HelpBoxes_.closeAll(); }
    void rowsErased(int firstRow) noexcept override { HelpBoxes_.closeFrom(firstRow); }
    void gridMoved() override {
        placeCaret();
        HelpBoxes_.follow(helpGrid());
    }
    void bellReceived() override { window_->enableTimer(TermTimer::tmrBeep, true); }

    // What help boxes ask for.
    void HelpBoxClosed(const frmHelp& box) noexcept override { HelpBoxes_.forget(box); }
    void HelpBoxLink(const std::string& Href) noexcept override;
    std::shared_ptr<const Picture> HelpBoxPicture(const std::string& Source) noexcept override;

    TermOwner& callback() const;
    HelpGrid helpGrid() const;
    void selectFont(std::int16_t index);
    std::string setting(const char* key, const std::string& fallback);
    /// Whether there is such an entry. Tells the user when there is none.
    bool hasEntry(const EntryList& entries, int index);
    void startEntry(const std::string& command, bool ask);
    void reportStart(const std::string& command, long result);
    void reportFailedStart(const std::string& command, const std::string& why);
    void complain() noexcept;

    TermPlatform& platform_;
    // A window may be inside a menu or a message box when its host releases everything else.
    std::shared_ptr<TermPlatform> platformKept_;
    // Lives as long as the form, which may be closed from within one of its calls.
    std::unique_ptr<TermWindow> window_;
    kavrelon::HelpBoxes HelpBoxes_;
    HostMenus menus_;
    PictureFolder pictureFolder_;
    Screen screen_{*this};
    Selection selection_{screen_};
    Keyboard keyboard_{*this};
    TermOwner* callback_ = nullptr;
    std::string ConnectionProfile_;
    std::string IniFile_;
    std::string screenWidthCaption_ = kWideCaption;
    std::chrono::system_clock::time_point CloseDate_;
    WindowState PrevWindowState_ = WindowState::Normal;
    bool PasteOk_ = true;
    bool CutOk_ = true;
    bool PasteBytes_ = true;
    bool TermActive_ = true;
    bool cursorBlinks_ = false;
    bool sessionOpen_ = false;
    bool sessionClosed_ = false;
    bool loaded_ = false;
    bool closing_ = false;
};

}  // namespace kavrelon
